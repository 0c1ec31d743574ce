#include "store/batch.h"

#include "store/engine.h"
#include "store/session.h"

Lote::Lote(Motor &motor) : m_motor(motor), m_propio(!motor.EnTransaccion())
{
    if (m_propio)
        m_motor.Empezar();
}

Lote::Lote(Sesion &s) : Lote(*s.motor) {}

Lote::~Lote()
{
    if (m_propio && !m_confirmado)
        m_motor.Deshacer();
}

void Lote::Confirmar()
{
    if (m_propio)
        m_motor.Confirmar();
    m_confirmado = true;
}
