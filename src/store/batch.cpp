#include "store/batch.h"

#include "store/engine.h"
#include "store/session.h"

using namespace store;

Lote::Lote(Motor &motor) : m_motor(motor), m_own(!motor.inTransaction())
{
    if (m_own)
        m_motor.begin();
    else
        m_motor.beginPart();
}

Lote::Lote(Sesion &s) : Lote(*s.motor) {}

Lote::~Lote()
{
    if (m_committed)
        return;
    if (m_own)
        m_motor.rollBack();
    else
        m_motor.undoPart();
}

void Lote::commit()
{
    if (m_own)
        m_motor.commit();
    else
        m_motor.commitPart();
    m_committed = true;
}

void Lote::countParts()
{
    if (m_own)
        m_motor.countParts();
}

PartOfBatch::PartOfBatch(Sesion &s) : m_motor(s.motor->inTransaction() ? s.motor.get() : nullptr)
{
    if (m_motor)
        m_motor->beginPart();
}

PartOfBatch::~PartOfBatch()
{
    if (m_motor)
        m_motor->undoPart();
}

void PartOfBatch::commit()
{
    if (m_motor)
        m_motor->commitPart();
    m_motor = nullptr;
}

void PartOfBatch::requireWhole(Sesion &s)
{
    if (s.motor->isLost())
        throw BatchMustRepeat();
}

WriteLock::WriteLock(Sesion &s)
{
    if (!s.motor->inTransaction())
        m_batch.emplace(s);
}

void WriteLock::commit()
{
    if (m_batch)
        m_batch->commit();
}
