#include "support/TestEnv.h"

#include "core/Connections.h"
#include "core/Openers.h"
#include "core/Session.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "schema/Demo.h"
#include "schema/LocalSchema.h"
#include "schema/SchemaLoader.h"

#include <QDir>
#include <QTest>
#include <QWidget>

namespace hipico::test {

Config serverConfig() {
    Config c;
    const int port = qEnvironmentVariableIntValue("HIPICO_DB_PORT");
    const QString password = qEnvironmentVariable("HIPICO_DB_PASSWORD", QStringLiteral("pqr482"));
    for (ServerConfig* s : {&c.servidor, &c.hipicos}) {
        s->host = QStringLiteral("localhost");
        s->usuario = QStringLiteral("root");
        s->clave = password;
        if (port > 0) s->puerto = port;
    }
    c.localClave = password;
    if (port > 0) c.localPuerto = port;
    c.ipSecundaria = QStringLiteral("10.0.0.2");
    return c;
}

namespace {

Config configFor(const QString& name) {
    Config c = serverConfig();
    c.servidor.base = "t_" + name;
    c.hipicos.base = "t_" + name + "_hip";
    c.localBase = "t_" + name + "_local";
    return c;
}

}  // namespace

TestEnv::TestEnv(const QString& testName, bool withLocal)
    : name(testName), config(configFor(testName)), ctx(config, dialogs, clock) {
    resetCentral();
    if (withLocal) resetLocal();
}

void TestEnv::resetCentral() {
    ctx.cnServidor.reset();
    crearEsquema(config.servidor, scriptCentral(), true);
    ctx.cnServidor = Db::open(cadenaServidor(config));
}

void TestEnv::loadDemo() {
    resetCentral();
    cargarDemo(db(), clock.today());
}

void TestEnv::resetLocal() {
    ctx.cnLocal.reset();
    {
        auto admin = Db::open(cadenaLocalSinBase(config));
        admin->exec(("DROP DATABASE IF EXISTS `" + config.localBase + "`").toStdString());
    }
    CrearBDLocal(config);
    ctx.cnLocal = Db::open(cadenaLocal(config));
}

void TestEnv::resetHipicos() {
    ctx.cnHipicos.reset();
    crearEsquema(config.hipicos, scriptHipicos(), true);
    auto db = Db::open(cadenaHipicos(config));
    cargarDemoHipicos(*db, clock.today());
}

void TestEnv::signIn(const QString& usuario) {
    Session& s = ctx.session;
    s = Session();
    Db& central = db();
    cargarIdentidad(s, central.query("select * from usuarios where usuario=?", {usuario}).first());
    const Recordset grupo = central.query("select * from grupos where grupo=?", {s.grupo});
    if (!grupo.empty()) cargarGrupoUsuario(s, grupo.first());
    if (!esNivelDireccion(s.nivel)) {
        const Recordset sub = central.query("select * from subgrupos where subgrupo=?", {s.subgrupo});
        if (!sub.empty()) cargarSubgrupo(s, sub.first());
    }
    cargarConfiguracion(s, central.query("select * from configuracion").first());
    AbrirGrupos(ctx);
    cargarParametrosGrupo(s, ctx.rs("rsGrupos"));
}

QString grab(QWidget* window, const QString& name) {
    QString folder = qEnvironmentVariable("HIPICO_SCREENS");
    if (folder.isEmpty()) folder = QDir::current().absoluteFilePath("screens");
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(name + ".png");
    window->grab().save(path);
    return path;
}

std::shared_ptr<Db> TestEnv::connect() const { return Db::open(cadenaServidor(config)); }

QString textOf(Db& db, const std::string& sql, const Params& params) {
    return Row::toText(db.scalar(sql, params));
}

double numberOf(Db& db, const std::string& sql, const Params& params) {
    return Row::toNumber(db.scalar(sql, params));
}

long long contar(Db& db, const char* tabla) {
    return Row::toInteger(db.scalar(std::string("SELECT count(*) FROM `") + tabla + "`"));
}

QStringList foto(Db& db, std::initializer_list<const char*> tablas) {
    QStringList out;
    for (const char* tabla : tablas) {
        out << QString::fromLatin1(tabla);
        for (const Row& r : db.query(std::string("SELECT * FROM `") + tabla + "` ORDER BY 1")) {
            QStringList campos;
            for (const QVariant& v : r.values()) campos << Row::toText(v);
            out << campos.join('|');
        }
    }
    return out;
}

void cerrarDialogos(ScriptedDialogs& dialogs) {
    const bool quedan = dialogs.answersLeft();
    dialogs.clear();
    if (quedan) QTest::qFail("a scripted answer was never used", __FILE__, __LINE__);
}

}  // namespace hipico::test
