#pragma once

// What the booth tests share: a demo day with a signed-in booth whose
// tickets print to a file port, other booths with their own connections,
// and results written the way results processing writes them.
#include "core/Formato.h"
#include "sales/AjustesLocales.h"
#include "sales/TicketKeys.h"
#include "sales/VentaGanadores.h"
#include "support/TestEnv.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

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

// A booth of its own: its own connection, dialogs and clock, the same
// session as the test's booth (for threads: one per thread).
struct Taquilla {
    explicit Taquilla(TestEnv& env, const Session& session)
        : ctx(env.config, dialogs, clock), venta(ctx) {
        clock.set(env.clock.now());
        ctx.cnServidor = env.connect();
        ctx.session = session;
        ctx.session.confLocal.impresion = 0;
    }
    ScriptedDialogs dialogs;
    FixedClock clock;
    Context ctx;
    VentaGanadores venta;
};

// Settles a race's winners of a group as results processing does: payout =
// units x the group's dividend, status 1, and the result keys.
inline void liquidar(Db& db, long long carrera, long long caballo, double dividendo, const QString& grupo,
                     const QString& fecha) {
    db.exec("update ma_principal set cobrado=(ganadores * ?),estatus=1,llave3=?,llave6=? where caballo=? and "
            "carrera =? and fecha = ? and (estatus <> 4 and estatus<>3) and grupo= ?",
            {dividendo, llave3Premio(dividendo), llave6Liquidacion(grupo, carrera, caballo, dividendo), caballo,
             carrera, fecha, grupo});
}

// Refunds one ticket (a scratched horse).
inline void devolver(Db& db, const QString& codigo, double valor = 10) {
    db.exec("update ma_principal set estatus=4,cobrado=ganadores*? where nu_boleto=? limit 1", {valor, codigo});
}

inline long long contar(Db& db, const char* tabla) {
    return static_cast<long long>(numberOf(db, std::string("SELECT count(*) FROM ") + tabla));
}

}  // namespace hipico::test
