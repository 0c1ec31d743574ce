#include "store/identifiers.h"

namespace
{

// The counter is read from the file inside the batch, behind the write lock, so that no other
// terminal can take the same value in between.
qint64 Leido(Sesion &s, std::string_view columna)
{
    return s.morvane->Leer("select " + std::string(columna) + " from configuracion").toLong();
}

// Through the settings row, which then knows the new value without being read again. Only a row
// that is out of date can hold the value already.
void Guardar(Sesion &s, std::string_view columna, qint64 valor)
{
    if (s.configuracion[columna].toLong() == valor)
        s.configuracion.Requery();
    s.configuracion.Edit();
    s.configuracion.Put(columna, valor);
    s.configuracion.Update();
}

// The tasks' counter starts again before it reaches this.
constexpr qint64 FinDeTareas = 2147483646;

} // namespace

int TomarIdentificador(Sesion &s, std::string_view contador, int maximo)
{
    Lote lote(s);
    const qint64 nuevo = Leido(s, contador) + 1;
    if (nuevo > maximo)
        throw ErrorDeAlmacen(ErrorNum::SinIdentificadores, s(29));
    Guardar(s, contador, nuevo);
    lote.Confirmar();
    return int(nuevo);
}

int TomarIdDeTarea(Sesion &s)
{
    Lote lote(s);
    qint64 nuevo = Leido(s, "contadorTareas") + 1;
    if (nuevo >= FinDeTareas) {
        s.morvane->Execute("delete * from TareasAgenda where fcreacion < date()");
        nuevo = 1;
    }
    Guardar(s, "contadorTareas", nuevo);
    lote.Confirmar();
    return int(nuevo);
}
