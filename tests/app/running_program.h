// The program as cron and other programs see it: started as a process on real folders.
#pragma once

#include "store/schema.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <csignal>

using namespace Qt::StringLiterals;

/// The result of a run.
struct Exit {
    int state = -1;
    QString pizarra; // standard output
    QString errores;
};

/// Starts the program on a data folder that is removed afterwards.
class Program : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString data = folder.path() + u"/datos"_s;

    static QString binary() { return QString::fromLatin1(KELVARA_PROGRAM); }
    QStringList dayArguments() const
    {
        return {u"--datos"_s, data, u"--idioma"_s, u"en"_s, u"--desatendido"_s};
    }
    void begin(QProcess &p, const QStringList &arguments, const QString &program = binary()) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"KELVARA_HOME"_s, folder.path());
        p.setProcessEnvironment(environment);
        p.start(program, arguments);
        EXPECT_TRUE(p.waitForStarted());
    }
    static Exit finish(QProcess &p)
    {
        EXPECT_TRUE(p.waitForFinished(120000));
        return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
                QString::fromUtf8(p.readAllStandardOutput()),
                QString::fromUtf8(p.readAllStandardError())};
    }
    /// @return whether it was still running
    static bool kill(QProcess &p)
    {
        ::kill(pid_t(p.processId()), SIGKILL);
        p.waitForFinished();
        return p.exitStatus() == QProcess::CrashExit;
    }

    Exit run(const QStringList &arguments, const QString &program = binary(),
             const QByteArray &input = {}) const
    {
        QProcess p;
        begin(p, arguments, program);
        p.write(input);
        p.closeWriteChannel();
        return finish(p);
    }
    Exit Day() const { return run(dayArguments()); }

    /// Why the clock cannot be shifted on this machine; nullptr when it can.
    static const char *withoutClock()
    {
        if (KELVARA_SANITIZED)
            return "the clock's shim and the sanitizer's do not load together";
        return QStandardPaths::findExecutable(u"faketime"_s).isEmpty()
                   ? "no tool to shift the clock"
                   : nullptr;
    }
    /// Runs the day with the clock set to another date.
    Exit dayOf(QDate dia) const
    {
        const QStringList reloj{dia.toString(Qt::ISODate) + u" 06:00:00"_s, binary()};
        return run(reloj + dayArguments(), u"faketime"_s);
    }

    /// Copies a demo clinic last started three days ago; the original is created only once.
    void Demo() const
    {
        static const QTemporaryDir model;
        static const QString de = model.path() + u"/demo"_s;
        static const Exit done = run({u"--crear"_s, de, u"--demo"_s, u"--idioma"_s, u"en"_s});
        ASSERT_EQ(done.state, 0) << done.errores.toStdString();
        QDir(data).removeRecursively();
        QDir(data).mkpath(u"reportes"_s);
        for (const QString &base : store::databases())
            ASSERT_TRUE(QFile::copy(store::pathUnder(de, store::fileOf(base)),
                                    data + u'/' + store::fileOf(base)));
    }

    /// Opens the folder as another terminal would, while the program may be running.
    template <typename F>
    void look(F &&f) const
    {
        store::UnattendedDialogs dialogos;
        store::NoPrinting impresion;
        Sesion s(dialogos, impresion, store::Language::English);
        store::setDataFolder(s, data);
        s.programFolder = folder.path() + u'/';
        const auto failure = store::openStore(s);
        ASSERT_FALSE(failure) << failure->text.toStdString();
        f(s);
    }
};
