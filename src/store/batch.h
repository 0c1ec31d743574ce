// Lote: the writes of one pass or one registration as one commit, over all databases.
#pragma once

class Motor;
struct Sesion;

/// Groups writes into one commit. Without Confirmar they are rolled back at the end of the scope.
/// A Lote inside another joins it: the outermost one commits. End it before asking the user
/// anything, so that no other terminal waits on a person.
class Lote
{
public:
    explicit Lote(Sesion &s);
    explicit Lote(Motor &motor);
    ~Lote();
    Lote(const Lote &) = delete;
    Lote &operator=(const Lote &) = delete;

    /// @throws StoreError when the disk refuses; then nothing of the batch was written
    void commit();

private:
    Motor &m_motor;
    bool m_own;
    bool m_committed = false;
};
