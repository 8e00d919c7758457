// hipico-bd: creates the schemas of a deployment and, for a demo, fills them.
//   hipico-bd [--config FILE] central [--demo] [--reemplazar]
//   hipico-bd [--config FILE] hipicos [--demo] [--reemplazar]
//   hipico-bd [--config FILE] local
//   hipico-bd [--config FILE] cerrar-dia [--fecha YYYY-MM-DD]
//     closes the working day (open pools included) and opens the given day, by
//     default the next one; exit status 0 closed, 1 database failure, 2 usage,
//     3 refused (the reason on stderr).
//   hipico-bd [--config FILE] verificar --fecha YYYY-MM-DD
//     walks the money journal's chains and rebuilds the day's winner-bet
//     totals per group from it; exit status 0 all agree, 1 database failure,
//     2 usage, 4 a chain broken or a total different (each on stdout).
#include "core/Config.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "core/Formato.h"
#include "core/Connections.h"
#include "core/Db.h"
#include "core/Diario.h"
#include "schema/Demo.h"
#include "schema/LocalSchema.h"
#include "schema/SchemaLoader.h"
#include "signin/CierreDia.h"

#include <QCoreApplication>
#include <QDate>
#include <QTextStream>

using namespace hipico;

namespace {

int cerrarDia(const Config& config, const QStringList& args) {
    QTextStream out(stdout);
    QTextStream err(stderr);
    ScriptedDialogs dialogs;
    SystemClock reloj;
    Context ctx(config, dialogs, reloj);
    ctx.cnServidor = Db::open(cadenaServidor(config));
    ctx.session.usuario = QStringLiteral("hipico-bd");
    CierreDia cierre(ctx);
    QDate siguiente;
    const int i = args.indexOf("--fecha");
    if (i >= 0) {
        siguiente = desdeFechaSql(args.value(i + 1));
        if (!siguiente.isValid()) {
            err << "hipico-bd: LA FECHA NO ES VALIDA (AAAA-MM-DD)\n";
            return 2;
        }
    } else {
        const QString hoy = Row::toText(ctx.servidor().scalar("SELECT fecha FROM configuracion WHERE id = 1"));
        siguiente = cierre.fechaPropuesta(desdeFechaSql(hoy));
    }
    const CierreDia::Salida s = cierre.cerrar(siguiente, true);
    if (!s.hecho) {
        err << "hipico-bd: " << s.negado << "\n";
        return 3;
    }
    out << "DIA " << s.hecho->fecha << " CERRADO: GANADORES " << s.hecho->ganadores << ", TABLA FIJA "
        << s.hecho->tablaFija << ", MACUARE " << s.hecho->macuare << ". NUEVA FECHA DE TRABAJO: " << s.hecho->fechaNueva
        << "\n";
    return 0;
}

int verificar(const Config& config, const QStringList& args) {
    QTextStream out(stdout);
    const int i = args.indexOf("--fecha");
    const QDate dia = i >= 0 ? desdeFechaSql(args.value(i + 1)) : QDate();
    if (!dia.isValid()) {
        QTextStream(stderr) << "hipico-bd: LA FECHA NO ES VALIDA (AAAA-MM-DD)\n";
        return 2;
    }
    auto db = Db::open(cadenaServidor(config));
    const InformeDiario informe = verificarDiario(*db, fechaSql(dia));
    out << "DIARIO: " << informe.filas << " FILAS\n";
    for (auto g = informe.grupos.cbegin(); g != informe.grupos.cend(); ++g)
        out << "GRUPO " << g.key() << ": VENDIDO " << QString::number(g->vendido, 'f', 2) << ", PAGADO "
            << QString::number(g->pagado, 'f', 2) << ", POR PAGAR " << QString::number(g->porPagar, 'f', 2)
            << ", ANULADOS " << g->anulados << "\n";
    for (const QString& d : informe.diferencias) out << d << "\n";
    out << (informe.correcto() ? "EL DIARIO CONCUERDA\n" : "EL DIARIO NO CONCUERDA\n");
    return informe.correcto() ? 0 : 4;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    QTextStream err(stderr);
    const QString archivo = Config::locate(args);
    const Config config = archivo.isEmpty() ? Config() : Config::load(archivo);
    const bool demo = args.contains("--demo");
    const bool reemplazar = args.contains("--reemplazar");
    try {
        if (args.contains("central")) {
            crearEsquema(config.servidor, scriptCentral(), reemplazar);
            if (demo) {
                auto db = Db::open(cadenaServidor(config));
                cargarDemo(*db, QDate::currentDate());
                cargarDemoSubastas(*db, QDate::currentDate());
                cargarDemoSemana(*db, QDate::currentDate());
                cargarDemoMacuare(*db, QDate::currentDate());
                cargarDemoTablaFija(*db, QDate::currentDate());
            }
        } else if (args.contains("hipicos")) {
            crearEsquema(config.hipicos, scriptHipicos(), reemplazar);
            if (demo) {
                auto db = Db::open(cadenaHipicos(config));
                cargarDemoHipicos(*db, QDate::currentDate());
            }
        } else if (args.contains("local")) {
            {
                auto servidor = Db::open(cadenaLocalSinBase(config));
                QString nombre = config.localBase;
                servidor->exec(("DROP DATABASE IF EXISTS `" + nombre.replace('`', "``") + "`").toStdString());
            }
            CrearBDLocal(config);
        } else if (args.contains("cerrar-dia")) {
            return cerrarDia(config, args);
        } else if (args.contains("verificar")) {
            return verificar(config, args);
        } else {
            err << "uso: hipico-bd [--config ARCHIVO] central|hipicos|local [--demo] [--reemplazar]\n"
                   "     hipico-bd [--config ARCHIVO] cerrar-dia [--fecha AAAA-MM-DD]\n"
                   "     hipico-bd [--config ARCHIVO] verificar --fecha AAAA-MM-DD\n";
            return 2;
        }
    } catch (const DbError& e) {
        err << "hipico-bd: " << e.text() << "\n";
        return 1;
    }
    return 0;
}
