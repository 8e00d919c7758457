// The central schema takes every positional insert of the system, holds one
// settings row, and the local report schema is created exactly, again and
// again after a drop.
#include "core/Cipher.h"
#include "core/Connections.h"
#include "schema/Demo.h"
#include "schema/Escritores.h"
#include "schema/LocalSchema.h"
#include "schema/SchemaLoader.h"
#include "support/Boletos.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstSchema : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    Recordset columnsOf(Db& db, const QString& schema, const QString& table) {
        return db.query("SELECT COLUMN_NAME, COLUMN_DEFAULT, CHARACTER_SET_NAME, COLUMN_KEY, EXTRA "
                        "FROM information_schema.COLUMNS WHERE TABLE_SCHEMA = ? AND TABLE_NAME = ? "
                        "ORDER BY ORDINAL_POSITION",
                        {schema, table});
    }

private slots:
    void initTestCase() { env = std::make_unique<TestEnv>("schema", true); }

    void positionalInserts_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("values");
        // Each statement as the system sends it: positional, the key first (the
        // tables the program writes through its writers are checked below).
        QTest::newRow("usuarios") << "INSERT INTO `usuarios` VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?)" << 14;
        QTest::newRow("ventas_ganadores")
            << "INSERT INTO `ventas_ganadores` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)" << 20;
        QTest::newRow("tablafija") << "INSERT INTO `tablafija` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?)" << 13;
        QTest::newRow("ventas_tf") << "INSERT INTO `ventas_tf` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?)" << 14;
        QTest::newRow("bitacora_tf") << "INSERT INTO `bitacora_tf` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)" << 15;
        QTest::newRow("combinaciones_general") << "INSERT INTO `combinaciones_general` VALUES (NULL,?,?,?,?)" << 4;
        QTest::newRow("carreras_remate")
            << "INSERT INTO `carreras_remate` VALUES (NULL,?,?,?,?,0,'','0','',0,'',0,'',0,0,0,0,0,0,0,?,0,0,?,0,0,0,0,0,0)"
            << 6;
    }

    void positionalInserts() {
        QFETCH(QString, sql);
        QFETCH(int, values);
        Params params;
        for (int i = 0; i < values; ++i) params.push_back(QString::number(i % 2 ? 1 : 2));
        QCOMPARE(env->db().exec(sql.toStdString(), params), 1LL);
        // One value more or less does not fit: the column count is the contract.
        Params oneMore = params;
        oneMore.push_back("1");
        QString wider = sql;
        wider.replace(")", ",?)");
        if (!sql.contains("(`numero`")) QVERIFY_THROWS_EXCEPTION(DbError, env->db().exec(wider.toStdString(), oneMore));
    }

    // Every writer names its columns in its table's order after the key, so
    // each value lands in the column it is written for.
    // A row of each writer, with distinct values.
    static const std::vector<Insercion>& muestras() {
        static const std::vector<Insercion> m{
            BoletoGanador{3, 5, 2.5, "LOS PINOS", "07", "10:15:00", "2026-11-23", 7.5, 1, "2026-11-24", "07112310", "S1",
                          "0123456789abcdef0123456789abcdef"}
                .insercion(),
            AnotacionBitacora{1000, 3, 5, 2.5, "LOS PINOS", "07", "10:15:00", "2026-11-23", "07112310", 7.5, "ANULADO",
                              "taquilla1", 5}
                .insercion(),
            Descarga{"2026-11-23", "10:15:00", "LOS PINOS", "07", 3, 5, 2.5, 7.5}.insercion(),
            Condicionado{"LOS PINOS", "07", "S1", "2026-11-23", 3, 5, 7.5}.insercion(),
            MovimientoCliente{1, -15, " Ganadores", 2, 7, 1, "07112310", "2026-11-23", "10:15:00", "CARRERA 3"}.insercion(),
            auditoriaBoletos(1, 0, "ganadores", "0"),
            resultadoTaquilla("LOS PINOS", "23-11-2026", 90, 60, 30, 10),
            UsuarioNuevo{"cajero", "clave", "CAJERO UNO", "Taquilla", "07", "LOS PINOS", "Activo", "2026-11-23"}
                .insercion(),
            lineaEstadoCliente(Row(std::make_shared<Columns>(QStringList{"ID", "MONTO", "FECHA", "HORA", "OPERACION",
                                                                         "CLIENTE", "TIPO", "NUMERO", "USUARIO",
                                                                         "BANCO", "observacion"}),
                                   {1, -15.5, "2026-11-23", "10:15:00", "Ganadores", "CARLOS LÓPEZ", "JUGADA",
                                    "07112310", "TAQUILLA UNO", "EFECTIVO", "CARRERA 3 CABALLO 5"})),
            FilaRemate{"2026-11-23", 3, "RELAMPAGO", 5, 1, "LOS PINOS", 20}.insercion(),
            BoletoMacuare{"2026-11-23", "10:15:00", 7.5, 3, {1, 2, 3, 4, 5, 6, 7}, "ANA", "07", "S1", "LOS PINOS",
                          "1-2-3-4-5-6-7", "0123456789abcdef0123456789abcdef"}
                .insercion(),
            anotacionMacuare(Row(std::make_shared<Columns>(QStringList{"numero", "boleto", "fecha", "hora", "monto",
                                                                       "veces", "combinacion", "nombre", "grupo",
                                                                       "taquilla", "cobrado"}),
                                 {1000, "51123100", "2026-11-23", "10:15:00", 7.5, 3, "1-2-3-4-5-6-7", "ANA", "07",
                                  "LOS PINOS", 12.5}),
                             "ANULADO", "taquilla2", 5),
            combinacionNueva("1-2-3-4-5-6-7", "2026-11-23", 22.5),
            BoletoTablaFija{3, 5, 4, 20, "LOS PINOS", "08", "10:15:00", "2026-11-23", 40, 1, "2112310", "2026-11-24",
                            "0123456789abcdef0123456789abcdef"}
                .insercion(),
            AnotacionTablaFija{1000, 3, 5, 20, 4, "LOS PINOS", "08", "10:15:00", "2026-11-23", 5, "2112310", 40,
                               "2026-11-24", "ANULADO", "tablafija"}
                .insercion(),
        };
        return m;
    }
    void writers_data() {
        QTest::addColumn<int>("i");
        for (int i = 0; i < int(muestras().size()); ++i) QTest::newRow(muestras()[i].tabla()) << i;
    }
    void writers() {
        QFETCH(int, i);
        const Insercion& fila = muestras()[i];
        const bool local = QString(fila.tabla()).startsWith("rpt_");  // a table of the local report schema
        if (local) env->resetLocal();
        Db& db = local ? env->local() : env->db();
        const Recordset cols = columnsOf(db, local ? env->config.localBase : env->config.servidor.base, fila.tabla());
        QStringList nombres;
        for (const Row& c : cols) nombres << c.text("COLUMN_NAME");
        QCOMPARE(cols[0].text("EXTRA"), QString("auto_increment"));
        QCOMPARE(nombres.mid(1), fila.columnas());
        if (qsizetype(fila.valores().size()) < fila.columnas().size()) {
            // An INSERT ... SELECT: one row per source row.
            const long long n = venderBoleto(db, QDate(2026, 11, 23), 3, 5, 2, "07", "LOS PINOS");
            QCOMPARE(insertarDesde(db, fila, "FROM ma_principal WHERE numero = ?", {n}), 1LL);
            return;
        }
        // Its values (in the order of its names) are accepted by the table.
        QVERIFY(insertar(db, fila) > 0);
    }

    void settingsHoldOneRow() {
        Db& db = env->db();
        db.exec("DELETE FROM configuracion");
        db.exec("INSERT INTO configuracion (id, fecha) VALUES (1, '2026-11-23')");
        QVERIFY_THROWS_EXCEPTION(DbError, db.exec("INSERT INTO configuracion (id, fecha) VALUES (2, '2026-11-24')"));
        QVERIFY_THROWS_EXCEPTION(DbError, db.exec("INSERT INTO configuracion (fecha) VALUES ('2026-11-24')"));
        QCOMPARE(numberOf(db, "SELECT count(*) FROM configuracion"), 1.0);
    }

    void everyTableHasAPrimaryKeyAndInnoDB() {
        const Recordset tables =
            env->db().query("SELECT t.TABLE_NAME, t.ENGINE, t.TABLE_COLLATION, "
                            "(SELECT count(*) FROM information_schema.STATISTICS s WHERE s.TABLE_SCHEMA = t.TABLE_SCHEMA "
                            "AND s.TABLE_NAME = t.TABLE_NAME AND s.INDEX_NAME = 'PRIMARY') AS pk "
                            "FROM information_schema.TABLES t WHERE t.TABLE_SCHEMA = ?",
                            {env->config.servidor.base});
        for (const Row& t : tables) {
            QVERIFY2(t.integer("pk") > 0, qPrintable(t.text("TABLE_NAME")));
            QCOMPARE(t.text("ENGINE"), QString("InnoDB"));
            QVERIFY(t.text("TABLE_COLLATION").startsWith("utf8mb4"));
        }
    }

    void localSchemaTwiceAfterADrop() {
        for (int vez = 0; vez < 2; ++vez) {
            env->resetLocal();
            Db& local = env->local();
            QCOMPARE(numberOf(local, "SELECT count(*) FROM conf_local"), 1.0);
            const Row c = local.query("SELECT * FROM conf_local").first();
            QCOMPARE(c.integer("id"), 1LL);
            QCOMPARE(c.integer("impresion"), 1LL);
            QCOMPARE(c.text("puerto"), QString("WINDOWS2:"));
            QCOMPARE(c.text("ip_secundaria"), QString("10.0.0.2"));
            QCOMPARE(c.integer("version"), 40004LL);
            QCOMPARE(c.integer("tamletra"), 8LL);
            QCOMPARE(c.integer("codbarras"), 1LL);
            const Recordset tables = local.query("SELECT TABLE_NAME FROM information_schema.TABLES "
                                                 "WHERE TABLE_SCHEMA = ? AND TABLE_NAME LIKE 'rpt\\_%'",
                                                 {env->config.localBase});
            for (const Row& t : tables)
                QCOMPARE(numberOf(local, ("SELECT count(*) FROM `" + t.text("TABLE_NAME") + "`").toStdString()), 0.0);
        }
    }

    void localSchemaDefinitions() {
        env->resetLocal();
        Db& local = env->local();
        const QString base = env->config.localBase;
        const Recordset remate = columnsOf(local, base, "rpt_diarioremate");
        QCOMPARE(remate.size(), 59);
        auto defaultOf = [&](const Recordset& cols, const QString& name) {
            const int i = cols.find("COLUMN_NAME", name);
            return i < 0 ? QString("?") : cols[i].text("COLUMN_DEFAULT");
        };
        QCOMPARE(defaultOf(remate, "mesa5"), QString("'0'"));
        QCOMPARE(defaultOf(remate, "mesa4"), QString("''"));
        QCOMPARE(remate[4].text("COLUMN_NAME"), QString("caballo"));
        QCOMPARE(remate[58].text("COLUMN_NAME"), QString("porfinal5"));
        const Recordset caballos = columnsOf(local, base, "rpt_caballos_tf");
        QCOMPARE(caballos[0].text("COLUMN_NAME"), QString("integer"));
        QCOMPARE(caballos[0].text("COLUMN_KEY"), QString("PRI"));
        const Recordset clientes = columnsOf(local, base, "rpt_jugadas_clientes");
        QCOMPARE(defaultOf(clientes, "cliente"), QString("'0'"));
        QCOMPARE(defaultOf(clientes, "banco"), QString("'0'"));
        QCOMPARE(clientes[6].text("CHARACTER_SET_NAME").left(4), QString("utf8"));
        const Recordset diario = columnsOf(local, base, "rpt_diario");
        QCOMPARE(diario[0].text("EXTRA"), QString("auto_increment"));
        QCOMPARE(defaultOf(diario, "fecha"), QString("'0000-00-00'"));
        QCOMPARE(diario[1].text("CHARACTER_SET_NAME"), QString("latin1"));
        // Reports insert positionally: a row of rpt_jugadas takes NULL and 15 values.
        QCOMPARE(local.exec("INSERT INTO `rpt_jugadas` VALUES (NULL,1,'0711154521',20,3,5,0,0,2,'23-11-2026','LOS PINOS',"
                            "'07',0,0,0,0)"),
                 1LL);
    }

    void creatingAnExistingLocalSchemaChangesNothing() {
        env->resetLocal();
        env->local().exec("DROP TABLE rpt_diario");
        QVERIFY_THROWS_EXCEPTION(DbError, CrearBDLocal(env->config));
        QCOMPARE(env->local().query("SHOW TABLES LIKE 'rpt_diario'").size(), 0);
        QCOMPARE(numberOf(env->local(), "SELECT count(*) FROM conf_local"), 1.0);
    }

    void scriptSplitting() {
        const QStringList s = sentenciasSql("-- comentario; con punto y coma\nCREATE TABLE a (x VARCHAR(5) DEFAULT ';');\n"
                                            "INSERT INTO a VALUES ('it''s; fine');  \n\n");
        QCOMPARE(s.size(), 2);
        QVERIFY(s[0].startsWith("CREATE TABLE a"));
        QVERIFY(s[1].endsWith("'it''s; fine')"));
        // A trigger's body keeps its own ";" between DELIMITER lines.
        const QStringList t = sentenciasSql("CREATE TABLE b (x INT);\nDELIMITER $$\nCREATE TRIGGER t AFTER INSERT ON b "
                                            "FOR EACH ROW BEGIN SET @a = 1; SET @b = ';$$'; END$$\nDELIMITER ;\n"
                                            "DROP TABLE b;");
        QCOMPARE(t, QStringList({"CREATE TABLE b (x INT)",
                                 "CREATE TRIGGER t AFTER INSERT ON b FOR EACH ROW BEGIN SET @a = 1; SET @b = ';$$'; END",
                                 "DROP TABLE b"}));
    }

    void demoDay() {
        env->loadDemo();
        Db& db = env->db();
        const QString hoy = env->clock.today().toString("yyyy-MM-dd");
        QCOMPARE(textOf(db, "SELECT fecha FROM configuracion"), hoy);
        const Recordset carreras = db.query("SELECT id_hipodromo, carrera, count(*) AS caballos, "
                                            "sum(retirado = 0) AS corren FROM carreras WHERE fecha = ? "
                                            "GROUP BY id_hipodromo, carrera",
                                            {hoy});
        QCOMPARE(carreras.size(), 16);
        int cuatro = 0;
        for (const Row& r : carreras) {
            QVERIFY(r.integer("caballos") >= 6 && r.integer("caballos") <= 12);
            if (r.integer("corren") == 4) ++cuatro;
        }
        QCOMPARE(cuatro, 1);
        QCOMPARE(numberOf(db, "SELECT count(DISTINCT ch) FROM grupos"), 2.0);
        QCOMPARE(numberOf(db, "SELECT count(*) FROM grupos"), 4.0);
        const QStringList niveles = {"Administrador", "Administrador Oculto", "Socio", "Gerente", "Supervisor",
                                     "SupervisorTF", "AdminTF", "Remate", "TablaFija", "Total", "Taquilla",
                                     "Taquilla2"};
        for (const QString& n : niveles)
            QVERIFY2(numberOf(db, "SELECT count(*) FROM usuarios WHERE nivel = ?", {n}) >= 1, qPrintable(n));
        for (const DemoUsuario& u : usuariosDemo())
            QCOMPARE(Desencriptar(textOf(db, "SELECT clave FROM usuarios WHERE usuario = ?", {u.usuario}), kClaveMaestra),
                     u.clave);
    }
};

QTEST_GUILESS_MAIN(TstSchema)
#include "tst_schema.moc"
