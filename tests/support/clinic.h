// What the tests of the rules share: a real clinic in a temporary folder, a fixed day and prompts
// that are told beforehand.
#pragma once

#include "store/data_folder.h"
#include "store/opening.h"
#include "store/session.h"

#include <QTemporaryDir>
#include <QThread>
#include <deque>
#include <gtest/gtest.h>

/// Answers what a test expects to be asked. A prompt that was not expected fails the test, and so
/// does one that was expected and never came.
class TestDialogs : public Dialogos
{
public:
    ~TestDialogs() override;

    /// The next prompt holds this text; a question gets the answer.
    void wait(const QString &part, bool answer = true);
    void expectText(const QString &part, std::optional<QString> answer);
    void expectSelection(const QString &part, std::optional<QList<int>> rows);

    void Mensaje(const QString &text) override;
    bool Pregunta(const QString &text) override;
    bool confirm(const QString &text) override;
    std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                      const QString &initial) override;
    std::optional<QList<store::Option>> Seleccionar(const QString &title,
                                                    const QStringList &columns,
                                                    const QList<store::Option> &options,
                                                    bool several) override;
    std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) override;
    std::optional<QString> saveFile(const QString &title, const QString &proposed,
                                    const QString &filter) override;

    /// Questions that hold one of these are answered No whenever they come.
    QStringList alwaysNo;

    /// Collects the faults instead of failing the test; for the test of this class alone.
    QStringList *faults = nullptr;

private:
    struct Prompt {
        QString part;
        bool si = true;
        std::optional<QString> text;
        std::optional<QList<int>> rows;
    };
    Prompt nextOne(const QString &text);
    void Missing(const QString &que);
    std::deque<Prompt> m_expected;
};

/// Notes the titles of what would have been printed.
class TestPrinting : public store::Printing
{
public:
    QStringList printed;
    void print(Sesion &s, Documento &document) override;
    void show(Sesion &s, Documento &document) override { print(s, document); }
};

/// A clinic as a new folder brings it, opened, on Wednesday 11 March 2026 at 09:00, in English,
/// with a Supervisor working. The file set is made once for each test program and copied.
class Clinic : public testing::Test
{
protected:
    explicit Clinic(store::Language language = store::Language::English);
    ~Clinic() override;

    QTemporaryDir folder;
    TestDialogs ask;
    TestPrinting impresion;
    Sesion s;

    const QDate hoy{2026, 3, 11};

    /// Opens the folder again with a new session state, as another start or terminal would.
    void reopen();
};

/// The rows of a query as text, a line each, fields parted by '|': whole states are compared so.
QString allRows(Base &base, std::string_view sql);

/// Waits for what other terminals have written to be noticed. @return whether it ever was
template <typename Condition>
bool eventually(Condition &&condition)
{
    for (int i = 0; i < 1000; ++i) {
        if (condition())
            return true;
        QThread::msleep(5);
    }
    return false;
}
