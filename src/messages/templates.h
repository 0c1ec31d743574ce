// The message templates of the settings and the tags in them.
#pragma once

#include "store/session.h"

namespace messages
{

/// The same for a text at hand, as the preview of the settings shows it.
QString fillTags(Sesion &s, const QString &templateText, int idc, int idm, int ida);

/// One entry of the template list of the settings.
struct Template {
    int title = 0;           // string of the list entry
    int help = 0;            // string that tells when it goes
    std::string_view column; // of the settings row
    int tip = 0;
    int medio = 1; // 1 e-mail, 2 letter
};
/// All of them, in the order of the list. The greeting for featured clients is edited in one column
/// and sent from another, deliberately.
const std::vector<Template> &templates();

/// Tags that can be written in a template, without the brackets.
const QStringList &tags();

/// Whom the settings show a template with.
struct Example {
    int idc = 0;
    int idm = 0; // 0 for a client without patients
    int ida = 0; // a product for the treatment
};
/// A client, or with 0 the session's client, or else the first one, with the session's patient if
/// it is that client's and else the first; nullopt while there is no client.
std::optional<Example> messageExample(Sesion &s, int idc = 0);

} // namespace messages

/// The text of one message: the template of the task's kind and medium with its tags filled in;
/// "" for a kind that has no template. A "<" without its ">" consumes the rest of the text, on
/// purpose.
/// @param tip kind of task; @param medio 1 is the mail text, otherwise the letter text, where a
///        kind has both; @param ida product of the treatment
QString ComponerMensaje(Sesion &s, int tip, int idc, int idm, int ida, int medio);

/// Value of one tag, letter case aside; "" for an unknown one. With @p idc 0 the client is the
/// owner of @p idm.
QString ResolverTag(Sesion &s, const QString &tag, int idc, int idm, int ida);
