"""A real mail server on loopback for the tests: keeps each message as a file and its envelope.

Prints its port on the first line. Options choose what it demands and how it misbehaves.
"""

import argparse
import asyncio
import json
import pathlib
import ssl

from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

options = argparse.ArgumentParser()
options.add_argument("folder", type=pathlib.Path)
options.add_argument("--user", default="")
options.add_argument("--password", default="")
options.add_argument("--certificate", default="")
options.add_argument("--key", default="")
options.add_argument("--tls", action="store_true", help="TLS from the first byte, else STARTTLS")
options.add_argument("--refuse", default="", help="recipient that is refused")
options.add_argument("--hang-at", type=int, default=0, help="message at which it falls silent")
options.add_argument("--drop-at", type=int, default=0, help="message at which it hangs up")
arg = options.parse_args()


class Keeper:
    def __init__(self):
        self.received = 0
        self.connections = 0

    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if arg.refuse and arg.refuse == address:
            return "550 no such user"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        number = self.received + 1
        if arg.hang_at == number:
            await asyncio.sleep(3600)
        if arg.drop_at == number:
            arg.drop_at = 0
            server.transport.abort()
            return "451 gone"
        self.received = number
        (arg.folder / f"{number:05}.eml").write_bytes(envelope.content)
        (arg.folder / f"{number:05}.json").write_text(json.dumps({
            "from": envelope.mail_from, "to": envelope.rcpt_tos, "tls": session.ssl is not None,
            "connection": id(session)}))
        return "250 kept"


def authenticate(server, session, envelope, mechanism, data):
    known = isinstance(data, LoginPassword) and data == LoginPassword(
        arg.user.encode(), arg.password.encode())
    return AuthResult(success=known)


async def main():
    keeper = Keeper()
    context = None
    if arg.certificate:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(arg.certificate, arg.key)

    def protocol():
        starttls = context is not None and not arg.tls
        return SMTP(keeper, hostname="localhost", enable_SMTPUTF8=True,
                    authenticator=authenticate, auth_required=bool(arg.user),
                    auth_require_tls=starttls, require_starttls=starttls,
                    tls_context=context if starttls else None)

    server = await asyncio.get_running_loop().create_server(
        protocol, "127.0.0.1", 0, ssl=context if arg.tls else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(main())
