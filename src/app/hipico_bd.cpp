// hipico-bd: creates the schemas of a deployment and, for a demo, fills them.
//   hipico-bd [--config FILE] central [--demo] [--reemplazar]
//   hipico-bd [--config FILE] hipicos [--demo] [--reemplazar]
//   hipico-bd [--config FILE] local
#include "core/Config.h"
#include "core/Connections.h"
#include "core/Db.h"
#include "schema/Demo.h"
#include "schema/LocalSchema.h"
#include "schema/SchemaLoader.h"

#include <QCoreApplication>
#include <QDate>
#include <QTextStream>

using namespace hipico;

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
        } else {
            err << "uso: hipico-bd [--config ARCHIVO] central|hipicos|local [--demo] [--reemplazar]\n";
            return 2;
        }
    } catch (const DbError& e) {
        err << "hipico-bd: " << e.text() << "\n";
        return 1;
    }
    return 0;
}
