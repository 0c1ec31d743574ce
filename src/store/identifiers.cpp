#include "store/identifiers.h"

#include "columns/configuracion.h"
#include "texts/texts.h"

using namespace store;

namespace
{

// Reads the counter from the file, under the write lock, so that no other terminal can take the
// same value.
qint64 hasBeenRead(Sesion &s, std::string_view column)
{
    return s.morvane->read("select " + std::string(column) + " from configuracion").toLong();
}

// Writes through the settings row, which then has the new value without being read again.
void save(Sesion &s, std::string_view column, qint64 value)
{
    s.configuracion.Edit();
    s.configuracion.Put(column, value);
    s.configuracion.Update();
}

// The task counter restarts before it reaches this.
constexpr qint64 TasksEnd = 2147483646;

} // namespace

int store::takeIdentifier(Sesion &s, std::string_view counter, int maximum)
{
    WriteLock lock(s);
    const qint64 newOne = hasBeenRead(s, counter) + 1;
    if (newOne > maximum)
        throw StoreError(ErrorNumber::Overflow, s(text::UnableToPerform));
    save(s, counter, newOne);
    lock.commit();
    return int(newOne);
}

int store::takeTaskId(Sesion &s)
{
    WriteLock lock(s);
    qint64 newOne = hasBeenRead(s, setting::contadorTareas) + 1;
    if (newOne >= TasksEnd) {
        s.morvane->Execute("delete * from TareasAgenda where fcreacion < date()");
        newOne = 1;
    }
    save(s, setting::contadorTareas, newOne);
    lock.commit();
    return int(newOne);
}
