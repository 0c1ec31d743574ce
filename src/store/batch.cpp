#include "store/batch.h"

#include "store/engine.h"
#include "store/session.h"

Lote::Lote(Motor &motor) : m_motor(motor), m_own(!motor.inTransaction())
{
    if (m_own)
        m_motor.begin();
}

Lote::Lote(Sesion &s) : Lote(*s.motor) {}

Lote::~Lote()
{
    if (m_own && !m_committed)
        m_motor.rollBack();
}

void Lote::commit()
{
    if (m_own)
        m_motor.commit();
    m_committed = true;
}
