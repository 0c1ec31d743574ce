// The message templates in the settings, and their tags.
#pragma once

#include "store/session.h"

namespace messages
{

/// Fills in the tags of a text given here, as in the preview of the settings. See ComponerMensaje.
QString fillTags(Sesion &s, const QString &templateText, int idc, int idm, int ida);

/// One entry of the template list of the settings.
struct Template {
    int title = 0;           // number of the text that names it
    int help = 0;            // number of the text that says when it is sent
    std::string_view column; // of the settings row
    int tip = 0;
    int medio = 1; // 1 e-mail, 2 letter
};
/// All templates, in the order of the list.
/// On purpose: the greeting for featured clients is edited in one column and sent from another.
const std::vector<Template> &templates();

/// The tags a template may contain, without the angle brackets.
const QStringList &tags();

/// The client and patient used to preview a template in the settings.
struct Example {
    int idc = 0;
    int idm = 0; // 0 for a client without patients
    int ida = 0; // product of the treatment
};
/// Picks the example for a preview.
/// @param idc the client; with 0 the session's client or, failing that, the first one. The patient
///        is the session's if it belongs to that client, else the client's first
/// @return nullopt while there are no clients
std::optional<Example> messageExample(Sesion &s, int idc = 0);

} // namespace messages

/// The text of one message: the template of the task's kind and channel with its tags filled in.
/// On purpose: a "<" without a ">" drops the rest of the text.
/// @param tip kind of task
/// @param ida product of the treatment
/// @param medio for kinds that have both texts, 1 selects the mail text and anything else the
///        letter text
/// @return "" for a kind without a template
QString ComponerMensaje(Sesion &s, int tip, int idc, int idm, int ida, int medio);

/// The value of one tag, whatever its letter case; "" for an unknown tag. With @p idc 0 the client
/// is the owner of patient @p idm.
QString ResolverTag(Sesion &s, const QString &tag, int idc, int idm, int ida);
