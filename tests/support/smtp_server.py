"""A real mail server on loopback for the tests: keeps what it received as a line of JSON each.

Prints its port on the first line. Options choose what it demands and how it misbehaves.
"""

import argparse
import asyncio
import email
import email.policy
import json
import logging
import os
import pathlib
import ssl
import sys
import threading
import warnings

from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

# What tests do to it on purpose is no news.
logging.disable()
warnings.simplefilter("ignore")

options = argparse.ArgumentParser()
options.add_argument("file", type=pathlib.Path)
options.add_argument("--port", type=int, default=0)
options.add_argument("--user", default="")
options.add_argument("--password", default="")
options.add_argument("--certificate", default="")
options.add_argument("--key", default="")
options.add_argument("--tls", action="store_true", help="TLS from the first byte, else STARTTLS")
options.add_argument("--refuse", default="", help="recipient that is refused")
options.add_argument("--hang-at", type=int, default=0, help="message at which it falls silent")
options.add_argument("--drop-at", default="", help="messages at which it hangs up, once each")
options.add_argument("--die-at", type=int, default=0, help="message at which it is gone")
options.add_argument("--close-after", type=int, default=0, help="messages taken on one connection")
options.add_argument("--mute", action="store_true", help="never says a word")
options.add_argument("--slow", type=float, default=0, help="seconds before and after it keeps one")
arg = options.parse_args()
drops = [int(n) for n in arg.drop_at.split(",") if n]


class Keeper:
    def __init__(self):
        self.received = 0
        self.on_line = {}

    async def handle_MAIL(self, server, session, envelope, address, mail_options):
        if arg.close_after and self.on_line.get(session.peer, 0) >= arg.close_after:
            server.transport.write(b"421 enough on this line\r\n")
            server.transport.close()
            return "421 enough on this line"
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if arg.refuse and address in arg.refuse.split(","):
            return "550 no such user"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if arg.hang_at and arg.hang_at <= self.received + 1:
            await asyncio.sleep(3600)
        if arg.die_at == self.received + 1:
            os._exit(0)
        if self.received + 1 in drops:
            drops.remove(self.received + 1)
            server.transport.abort()
            return "451 gone"
        if arg.slow:
            await asyncio.sleep(arg.slow)
        self.received += 1
        self.on_line[session.peer] = self.on_line.get(session.peer, 0) + 1
        message = email.message_from_bytes(envelope.content, policy=email.policy.default)
        with arg.file.open("a") as kept:
            print(json.dumps({
                "from": envelope.mail_from, "to": envelope.rcpt_tos, "tls": server.transport.get_extra_info("ssl_object") is not None,
                "connection": session.peer[1], "subject": message["Subject"],
                "body": message.get_content(),
                "raw": envelope.content.decode("ascii", "replace")}), file=kept)
        if arg.slow:
            await asyncio.sleep(arg.slow)
        return "250 kept"


def authenticate(server, session, envelope, mechanism, data):
    known = not arg.user or isinstance(data, LoginPassword) and data == LoginPassword(
        arg.user.encode(), arg.password.encode())
    return AuthResult(success=known, handled=False)


def end_with_the_test():
    sys.stdin.read()
    os._exit(0)


async def main():
    threading.Thread(target=end_with_the_test, daemon=True).start()
    keeper = Keeper()
    context = None
    if arg.certificate:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(arg.certificate, arg.key)

    def protocol():
        if arg.mute:
            return asyncio.Protocol()
        starttls = context is not None and not arg.tls
        return SMTP(keeper, hostname="localhost", enable_SMTPUTF8=True,
                    authenticator=authenticate, auth_required=bool(arg.user),
                    auth_require_tls=starttls, require_starttls=starttls,
                    tls_context=context if starttls else None)

    server = await asyncio.get_running_loop().create_server(
        protocol, "127.0.0.1", arg.port, ssl=context if arg.tls else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(main())
