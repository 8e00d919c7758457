// Connections, openers and the session: the connection texts, the failure
// message of the central connection, every opener with its global and
// profile, the shared recordsets, and filling the session.
#include "core/Cipher.h"
#include "core/Connections.h"
#include "core/Openers.h"
#include "core/Session.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstConnections : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("connections", true);
        env->loadDemo();
        env->resetHipicos();
    }

    void connectionTexts() {
        Config c;
        c.servidor = {"central.red", "hipico", "s3creta", "hipico", 3306, {}};
        c.hipicos = {"hipicos.red", "lector", "clave2", "hipicos", 3306, {}};
        QCOMPARE(cadenaServidor(c),
                 QString("DRIVER={MariaDB ODBC 3.2 Driver};TCPIP=1;SERVER=central.red;UID=hipico;PWD=s3creta;"
                         "DATABASE=hipico;PORT=3306;CHARSET=utf8mb4;"));
        QCOMPARE(cadenaLocal(c), QString("driver={MySQL ODBC 3.51 Driver};server=localhost;port=3306;uid=root;"
                                         "pwd=pqr482;database=bd_tarvimo;connection="));
        QCOMPARE(cadenaHipicos(c), QString("driver={MySQL ODBC 3.51 Driver};server=hipicos.red;port=3306 ;"
                                           "uid=lector;pwd=clave2;database=hipicos;"));
        QCOMPARE(cadenaLocalSinBase(c),
                 QString("driver={MySQL ODBC 3.51 Driver};server=localhost;uid=root;pwd=pqr482;connection="));
        QCOMPARE(cadenaLocalConBase(c), QString("driver={MySQL ODBC 3.51 Driver};server=localhost;uid=root;"
                                                "pwd=pqr482;database=bd_tarvimo;connection="));
    }

    void failedCentralConnectionTellsOnceAndDoesNotRetry() {
        ScriptedDialogs d;
        FixedClock clock;
        Config bad = env->config;
        bad.servidor.clave = "equivocada";
        Context ctx(bad, d, clock);
        QVERIFY(!ConectarServidor(ctx));
        QVERIFY(!ctx.cnServidor);
        QCOMPARE(d.count(), 1);
        QCOMPARE(d.last().text, QString(" HA OCURRIDO UN ERROR CON LA CONEXIÓN, REVISE LA CONEXION DE INTERNET "));
        QCOMPARE(d.last().title, QString("CONEXION CON EL SERVIDOR"));
        QCOMPARE(d.last().icon, Icon::Critical);
        // The caller's next statement fails in the caller's own handling.
        QVERIFY_THROWS_EXCEPTION(DbError, ctx.servidor());
        QVERIFY(!ConectarServidor(ctx));
        QCOMPARE(d.count(), 2);
    }

    void reconnectingGivesAFreshConnection() {
        Context& ctx = env->ctx;
        QVERIFY(ConectarServidor(ctx));
        const std::weak_ptr<Db> old = ctx.cnServidor;
        AbrirUsuarios(ctx);  // edit profile: holds its connection
        QVERIFY(ConectarServidor(ctx));
        QVERIFY(ctx.cnServidor.get() != old.lock().get());
        QVERIFY(!old.expired());  // still held by rsUsuarios
        AbrirUsuarios(ctx);
        QVERIFY(old.expired());
    }

    void everyOpenerFillsItsGlobal() {
        Context& ctx = env->ctx;
        QVERIFY(ConectarServidor(ctx));
        ConectarLocal(ctx);
        ConectarHipicos(ctx);
        QCOMPARE(int(openers().size()), 31);
        for (const Opener& o : openers()) {
            abrir(ctx, o);
            const Recordset& rs = ctx.rs(o.global);
            QVERIFY2(!rs.columnNames().isEmpty() || rs.empty(), o.name);
            QCOMPARE(rs.profile(), o.profile == Opener::Profile::Edit ? Recordset::Profile::Edit
                                                                      : Recordset::Profile::Read);
        }
        QCOMPARE(ctx.rs("rsHipodromos").size(), 3);
        QCOMPARE(ctx.rs("rsCentrosHipicos").size(), 4);
        QCOMPARE(ctx.rs("rsConfiguracion").size(), 1);
        QCOMPARE(QString(findOpener("AbrirMacuares")->sql), QString("select * from macuares "));
    }

    void sharedGlobals() {
        Context& ctx = env->ctx;
        QVERIFY(ConectarServidor(ctx));
        AbrirCombinaciones(ctx);
        QVERIFY(ctx.rs("rsCombinaciones").columnNames().contains("id_combinacion"));
        ConectarLocal(ctx);
        // ConectarLocal leaves rsCombinaciones on the local rpt_macuare.
        QVERIFY(ctx.rs("rsCombinaciones").columnNames().contains("id_rpt"));
        QCOMPARE(ctx.rs("rsCombinaciones").table(), QString("rpt_macuare"));
        for (const char* g : {"rsRptDiario", "rsRptDiarioRemate", "rsRptDividendos", "rsRptGeneral", "rsRptDiarioMC",
                              "rsRptResultadosTaqs", "rsRptJugadoresRemate", "rsRptCaballosTF"})
            QVERIFY2(ctx.hasRecordset(g), g);
        AbrirGruposLectura(ctx);
        QCOMPARE(ctx.rs("rsGrupos").profile(), Recordset::Profile::Read);
        AbrirGrupos(ctx);
        QCOMPARE(ctx.rs("rsGrupos").profile(), Recordset::Profile::Edit);
        QCOMPARE(ctx.rs("rsGrupos")[0].text("ch"), QString("LOS PINOS"));  // ordered by centre
    }

    void editProfileWritesThroughTheOpener() {
        Context& ctx = env->ctx;
        QVERIFY(ConectarServidor(ctx));
        AbrirConfiguracion(ctx);
        Recordset& rs = ctx.rsEdit("rsConfiguracion");
        rs.setValue(0, "mensajetaq", "CARRERA 3 CERRADA");
        rs.update(0);
        QCOMPARE(textOf(env->db(), "select mensajetaq from configuracion"), QString("CARRERA 3 CERRADA"));
    }

    void localOpenerErrorsGoToTheCaller() {
        ScriptedDialogs d;
        FixedClock clock;
        Config c = env->config;
        c.localBase = "t_no_existe_local";
        Context ctx(c, d, clock);
        QVERIFY_THROWS_EXCEPTION(DbError, ConectarLocal(ctx));
        QCOMPARE(d.count(), 0);
    }

    void sessionFromTheDemoRows() {
        Db& db = env->db();
        Session s;
        cargarIdentidad(s, db.query("select * from usuarios where usuario=?", {"taquilla1"}).first());
        QCOMPARE(s.nivel, QString("Taquilla"));
        QCOMPARE(s.grupo, QString("07"));
        QCOMPARE(Desencriptar(s.clave, kClaveMaestra), QString("taq123"));
        cargarGrupoUsuario(s, db.query("select * from grupos where grupo=?", {s.grupo}).first());
        QCOMPARE(s.ch, QString("LOS PINOS"));
        QCOMPARE(s.subgrupo, QString("S1"));
        QCOMPARE(s.bloqueo, 1);
        QCOMPARE(s.subastas, 2);
        cargarConfiguracion(s, db.query("select * from configuracion").first());
        QCOMPARE(s.fecha, env->clock.today().toString("yyyy-MM-dd"));
        QCOMPARE(s.version, 40004.0);
        const Recordset grupos = db.query("select * from grupos order by ch");
        QVERIFY(cargarParametrosGrupo(s, grupos));
        QCOMPARE(s.ticketCobro, 1);
        QCOMPARE(s.duracionBoletos, 3);
        QCOMPARE(s.minBs, 10.0);
        QCOMPARE(s.parametro("cab_max"), 14.0);
        QCOMPARE(s.parametroTexto("clave_win"), QString("1234"));

        // A group with no row leaves the parameters at zero or empty.
        s.grupo = "99";
        QVERIFY(!cargarParametrosGrupo(s, grupos));
        QCOMPARE(s.ticketCobro, 0);
        QCOMPARE(s.minBs, 0.0);
        QCOMPARE(s.nameEmpresa, QString());
        QCOMPARE(s.parametro("cab_max"), 0.0);

        // Changing group replaces the group values of the session.
        cambiarGrupo(s, db.query("select * from grupos where grupo=?", {"12"}).first());
        QCOMPARE(s.grupo, QString("12"));
        QCOMPARE(s.ch, QString("MARACAY"));
        QCOMPARE(s.subgrupo, QString("S2"));
        QCOMPARE(s.parametro("inicialboleto"), 0.0);
    }
};

QTEST_GUILESS_MAIN(TstConnections)
#include "tst_connections.moc"
