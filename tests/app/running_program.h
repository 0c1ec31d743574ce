// The program as cron and other programs meet it: started as a process on real folders.
#pragma once

#include "store/schema.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <csignal>

using namespace Qt::StringLiterals;

struct Salida {
    int estado = -1;
    QString pizarra; // standard output
    QString errores;
};

class Programa : public testing::Test
{
protected:
    QTemporaryDir carpeta;
    const QString datos = carpeta.path() + u"/datos"_s;

    static QString Binario() { return QString::fromLatin1(KELVARA_PROGRAM); }
    QStringList ArgumentosDelDia() const
    {
        return {u"--datos"_s, datos, u"--idioma"_s, u"en"_s, u"--desatendido"_s};
    }
    void Empezar(QProcess &p, const QStringList &argumentos,
                 const QString &programa = Binario()) const
    {
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        entorno.insert(u"KELVARA_HOME"_s, carpeta.path());
        p.setProcessEnvironment(entorno);
        p.start(programa, argumentos);
        EXPECT_TRUE(p.waitForStarted());
    }
    static Salida Terminar(QProcess &p)
    {
        EXPECT_TRUE(p.waitForFinished(120000));
        return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
                QString::fromUtf8(p.readAllStandardOutput()),
                QString::fromUtf8(p.readAllStandardError())};
    }
    /// @return whether it was still running
    static bool Matar(QProcess &p)
    {
        ::kill(pid_t(p.processId()), SIGKILL);
        p.waitForFinished();
        return p.exitStatus() == QProcess::CrashExit;
    }

    Salida Correr(const QStringList &argumentos, const QString &programa = Binario()) const
    {
        QProcess p;
        Empezar(p, argumentos, programa);
        return Terminar(p);
    }
    Salida Dia() const { return Correr(ArgumentosDelDia()); }

    /// Why the clock cannot be shifted here; nullptr when it can.
    static const char *SinReloj()
    {
        if (KELVARA_SANITIZED)
            return "the clock's shim and the sanitizer's do not load together";
        return QStandardPaths::findExecutable(u"faketime"_s).isEmpty()
                   ? "no tool to shift the clock"
                   : nullptr;
    }
    /// The day as on another date.
    Salida DiaDel(QDate dia) const
    {
        const QStringList reloj{dia.toString(Qt::ISODate) + u" 06:00:00"_s, Binario()};
        return Correr(reloj + ArgumentosDelDia(), u"faketime"_s);
    }

    /// A demo clinic whose last start lies three days back; made once, copied for each test.
    void Demo() const
    {
        static const QTemporaryDir modelo;
        static const QString de = modelo.path() + u"/demo"_s;
        static const Salida hecho = Correr({u"--crear"_s, de, u"--demo"_s, u"--idioma"_s, u"en"_s});
        ASSERT_EQ(hecho.estado, 0) << hecho.errores.toStdString();
        QDir(datos).removeRecursively();
        QDir(datos).mkpath(u"reportes"_s);
        for (const QString &base : BasesDeDatos())
            ASSERT_TRUE(QFile::copy(RutaBajo(de, ArchivoDe(base)), datos + u'/' + ArchivoDe(base)));
    }

    /// Opens the folder beside the program, as another terminal.
    template <typename F>
    void Mirar(F &&f) const
    {
        DialogosDesatendidos dialogos;
        SinImpresion impresion;
        Sesion s(dialogos, impresion, Idioma::Ingles);
        FijarCarpetaDeDatos(s, datos);
        s.carpetaDePrograma = carpeta.path() + u'/';
        const auto falla = AbrirAlmacen(s);
        ASSERT_FALSE(falla) << falla->texto.toStdString();
        f(s);
    }
};
