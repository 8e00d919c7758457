#pragma once

// What the booth tests share: a demo day with a signed-in booth whose
// tickets print to a file port, and other booths with their own connections.
#include "core/Formato.h"
#include "sales/AjustesLocales.h"
#include "sales/TicketKeys.h"
#include "sales/TicketPrinter.h"
#include "sales/VentaGanadores.h"
#include "support/Boletos.h"
#include "support/TestEnv.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>

namespace hipico::test {

// Printing settings kept in the booth's own file (a booth has no local schema).
inline void prepararImpresion(const Config& config, const QString& puerto, int impresion = 1) {
    QSettings ini(archivoAjustesMaquina(config), QSettings::IniFormat);
    ini.setValue("impresion/impresion", impresion);
    ini.setValue("impresion/puerto", puerto);
    ini.setValue("impresion/tamletra", 8);
    ini.setValue("impresion/codbarras", 1);
    ini.sync();
}

// The text a raw printer received: Windows-1252 bytes, CR LF line ends.
inline QString leerPuerto(const QString& archivo) {
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromLatin1(f.readAll());
}

// The raw text one printed piece makes.
inline QString crudo(const QStringList& lineas) {
    QString out;
    for (const QString& l : lineas) out += l + "\r\n";
    return out + QChar(0x1b) + "d" + QChar(5);
}

// A stand-in for the printing system's "lp" in a folder put first on PATH:
// it keeps its arguments in lp.args and what it is given in lp.data, and
// refuses any queue but "X". Restores PATH when it goes.
struct LpDePrueba {
    explicit LpDePrueba(const QString& carpeta) : dir(carpeta), path(qgetenv("PATH")) {
        QDir().mkpath(dir + "/bin");
        QFile script(dir + "/bin/lp");
        script.open(QIODevice::WriteOnly);
        script.write(("#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + dir + "/lp.args'\ncat > '" + dir +
                      "/lp.data'\n[ \"$2\" = X ] || { echo 'cola desconocida' >&2; exit 1; }\n")
                         .toUtf8());
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(dir + "/bin") + ":" + path);
    }
    ~LpDePrueba() { qputenv("PATH", path); }
    QString leer(const QString& nombre) const {
        QFile f(dir + "/" + nombre);
        return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
    }
    QString dir;
    QByteArray path;
};

// The printer modes as a data-driven test names them: a file port, the
// shared queue, the graphic printer (drawn into a PDF file).
inline void filasModosImpresora() {
    QTest::addColumn<QString>("modo");
    QTest::newRow("port") << "port";
    QTest::newRow("shared queue") << "WINDOWS:";
    QTest::newRow("graphic") << "WINDOWS2:";
}

// The booth's printer in one of those modes for a test: lp's stand-in, the
// PDF file the graphic printer draws into, and the booth's setting.
struct ImpresoraDePrueba {
    ImpresoraDePrueba(const Config& config, const QString& carpeta, const QString& modo, const QString& puerto)
        : lp(carpeta), pdf(carpeta + "/impreso.pdf"), modo(modo), puerto(puerto) {
        fijarSalidaPdf(pdf);
        prepararImpresion(config, modo == "port" ? puerto : modo);
    }
    ~ImpresoraDePrueba() { fijarSalidaPdf({}); }
    // The lines the last piece put out: the port file, what lp was given, or
    // the PDF's text (trimmed, no empty lines). Raw lines end with the paper feed.
    QStringList lineas() const {
        if (modo == "WINDOWS:") return lp.leer("lp.data").split("\r\n");
        if (modo != "WINDOWS2:") return leerPuerto(puerto).split("\r\n");
        QProcess t;
        t.start("pdftotext", {"-layout", pdf, "-"});
        t.waitForFinished(30000);
        QStringList out;
        for (const QString& l : QString::fromUtf8(t.readAllStandardOutput()).split('\n'))
            if (!l.trimmed().isEmpty()) out << l.trimmed();
        return out;
    }
    // Nothing printed yet.
    void vaciar() const {
        QFile::remove(puerto);
        QFile::remove(pdf);
    }
    LpDePrueba lp;
    QString pdf, modo, puerto;
};

// The sale window's logic, loaded as the window loads it.
inline VentaGanadores ventaCargada(Context& ctx) {
    VentaGanadores v(ctx);
    v.cargar();
    return v;
}

// Signs a user in (the session of sign-in and menu) with no boxes shown yet.
inline void entrar(TestEnv& env, const QString& usuario) {
    env.signIn(usuario);
    env.dialogs.clear();
}

// The booth tests' environment: a private folder for this machine's files.
inline std::unique_ptr<TestEnv> entorno(const QString& nombre, const QString& carpeta, bool conLocal = false) {
    auto env = std::make_unique<TestEnv>(nombre, conLocal);
    env->config.carpetaLocal = carpeta;
    env->ctx.config.carpetaLocal = carpeta;
    return env;
}

// Each booth test starts on a fresh demo day, taquilla1 signed in, tickets printed to the port.
inline void empezarDia(TestEnv& env, const QString& puerto) {
    env.loadDemo();
    entrar(env, "taquilla1");
    prepararImpresion(env.config, puerto);
    QFile::remove(puerto);
}

// A booth of its own: its own connection, dialogs and clock, the same
// session as the test's booth (for threads: one per thread), with the sale
// logic of the game it sells.
template <class Venta>
struct TaquillaDe {
    explicit TaquillaDe(TestEnv& env, const Session& session)
        : ctx(env.config, dialogs, clock), venta(ctx) {
        clock.set(env.clock.now());
        ctx.cnServidor = env.connect();
        // Another booth is another machine, with its own chain of the money
        // journal (booths of one machine would take turns on its chain's row,
        // and on a cluster conflict on it at every sale).
        static std::atomic<int> maquinas{0};
        ctx.cnServidor->firmarMaquina(QStringLiteral("TAQUILLA-%1").arg(++maquinas));
        ctx.session = session;
        ctx.session.confLocal.impresion = 0;
    }
    ScriptedDialogs dialogs;
    FixedClock clock;
    Context ctx;
    Venta venta;
};
using Taquilla = TaquillaDe<VentaGanadores>;

}  // namespace hipico::test
