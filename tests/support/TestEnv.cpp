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
#include <atomic>

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

// On a cluster (HIPICO_DB_PORTS: the nodes' ports) the connections of the
// tests are spread over the nodes: each test program's own connection on one
// node, every further one on the next node in turn.
QList<int> puertosNodos() {
    QList<int> out;
    for (const QString& p : qEnvironmentVariable("HIPICO_DB_PORTS").split(',', Qt::SkipEmptyParts))
        if (p.trimmed().toInt() > 0) out << p.trimmed().toInt();
    return out;
}

Config enNodo(Config c, int indice) {
    const QList<int> nodos = puertosNodos();
    if (nodos.isEmpty()) return c;
    const int puerto = nodos.at(indice % nodos.size());
    for (ServerConfig* s : {&c.servidor, &c.hipicos}) s->puerto = puerto;
    c.localPuerto = puerto;
    return c;
}

Config configFor(const QString& name) {
    int n = 0;
    for (const QChar ch : name) n += ch.unicode();
    Config c = enNodo(serverConfig(), n);
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

std::shared_ptr<Db> TestEnv::connect() const {
    static std::atomic<int> siguiente{1};
    const int nodo = siguiente++;
    QStringList otros;
    for (int i = 1; i < puertosNodos().size(); ++i) otros << cadenaServidor(enNodo(config, nodo + i));
    return Db::open(cadenaServidor(enNodo(config, nodo)), otros);
}

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
