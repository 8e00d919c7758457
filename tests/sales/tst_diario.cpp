// The money journal and the horses' running totals against the real server:
// every money operation appends its row in its own transaction, the chains
// and the day's totals verify, and a change, deletion or insertion in the
// journal (or a changed ticket) is found.
#include "BoothFixture.h"

#include "admin/ProcesoCarrera.h"
#include "core/Diario.h"
#include "signin/CierreDia.h"

#include <QtTest>
#include <thread>

using namespace hipico;
using namespace hipico::test;

class TstDiario : public QObject {
    Q_OBJECT
    QTemporaryDir carpeta;
    std::unique_ptr<TestEnv> env;
    QString fecha;  // the demo's working day

    Db& db() { return env->db(); }

    BoletoVendido vender(VentaGanadores& v, const QString& caballo, const QString& monto) {
        const auto r = v.procesarVenta("1", caballo, monto);
        if (r.resultado != VentaGanadores::Resultado::Vendido) qFatal("venta rechazada");
        return r.boleto;
    }

    QString operaciones() {
        return textOf(db(), "SELECT group_concat(operacion ORDER BY id) FROM diario WHERE operacion <> 'PREMIOS'");
    }

    // The horses' running totals, and the same sums made from the tickets.
    QString totalesCaballos() {
        return textOf(db(), "SELECT group_concat(concat_ws(':', carrera, caballo, ch, grupo, ganadores, boletos) "
                            "ORDER BY carrera, caballo, ch, grupo) FROM venta_caballo WHERE boletos <> 0");
    }
    QString sumasBoletos() {
        return textOf(db(), "SELECT group_concat(concat_ws(':', carrera, caballo, ch, grupo, g, n) ORDER BY carrera, "
                            "caballo, ch, grupo) FROM (SELECT carrera, caballo, ch, grupo, sum(ganadores) AS g, "
                            "count(*) AS n FROM ma_principal GROUP BY fecha, carrera, caballo, ch, grupo) s");
    }

    // A mixed day of two groups: sold, voided, processed, paid and refunded.
    void diaMezclado() {
        VentaGanadores v = ventaCargada(env->ctx);
        const auto a = vender(v, "3", "5");   // winner, paid
        vender(v, "3", "2,5");                // winner, due
        const auto c = vender(v, "4", "3");   // refund, paid
        vender(v, "5", "6");                  // loser
        const auto f = vender(v, "5", "2");   // voided
        env->dialogs.type(f.codigo).type("ANULADO").yes();
        QVERIFY(v.anularBoleto());
        Taquilla maracay(*env, env->ctx.session);
        maracay.ctx.session.ch = "MARACAY";
        maracay.ctx.session.grupo = "12";
        vender(maracay.venta, "3", "4");
        devolverBoletos(db(), fecha, 1, "07", 4, 10);
        liquidar(db(), fecha, 1, 3, 12.5);
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        QVERIFY(v.buscarBoletoCobro(c.codigo).pagable && v.cobrarBoleto());
        env->dialogs.clear();
    }

private slots:
    void initTestCase() {
        env = entorno("diario", carpeta.path());
        fecha = fechaSql(env->clock.today());
    }
    void init() { empezarDia(*env, carpeta.filePath("boletos.prn")); }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void everyMoneyOperationAppendsItsRow() {
        VentaGanadores v = ventaCargada(env->ctx);
        const auto a = vender(v, "3", "5");
        const auto b = vender(v, "2", "3");
        QCOMPARE(int(v.procesarVenta("1", "99", "5").resultado), int(VentaGanadores::Resultado::Rechazado));
        env->dialogs.type(b.codigo).type("ANULADO").yes();
        QVERIFY(v.anularBoleto());
        liquidar(db(), fecha, 1, 3, 12.5);
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        QCOMPARE(operaciones(), QString("VENTA,VENTA,ANULACION,PAGO"));
        QCOMPARE(textOf(db(), "SELECT concat_ws('|', usuario, codigo, grupo, fecha, carrera, unidades, monto) FROM "
                              "diario ORDER BY id LIMIT 1"),
                 "taquilla1|" + a.codigo + "|07|" + fecha + "|1|5.000000|50.000000");
        // The processing leaves what the race owes the group: a's payout.
        QCOMPARE(textOf(db(), "SELECT monto FROM diario WHERE operacion = 'PREMIOS' AND grupo = '07'"),
                 QString("62.5"));
        env->dialogs.clear();
    }

    void aFailedSaleLeavesNeitherTicketNorJournalRow() {
        // The journal's insert fails after the ticket was written: the whole sale goes.
        db().exec("CREATE TRIGGER falla BEFORE INSERT ON diario FOR EACH ROW "
                  "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'sin diario'");
        VentaGanadores v = ventaCargada(env->ctx);
        QVERIFY_THROWS_EXCEPTION(DbError, v.procesarVenta("1", "3", "5"));
        db().exec("DROP TRIGGER falla");
        QCOMPARE(contar(db(), "ma_principal"), 0LL);
        QCOMPARE(contar(db(), "diario"), 0LL);
        QCOMPARE(totalesCaballos(), QString());
        env->dialogs.clear();
    }

    void aMixedDayVerifiesBeforeAndAfterItsClose() {
        diaMezclado();
        InformeDiario i = verificarDiario(db(), fecha);
        QVERIFY2(i.correcto(), qPrintable(i.diferencias.join('\n')));
        // Group 07: 5 + 2.5 + 3 + 6 units (the voided 2 gone); 62.5 and 30 paid;
        // the second winner's 31.25 due.
        const InformeDiario::Totales g07 = i.grupos.value("07");
        QCOMPARE(g07.vendido, 16.5);
        QCOMPARE(g07.pagado, 92.5);
        QCOMPARE(g07.porPagar, 31.25);
        QCOMPARE(g07.anulados, 1LL);
        QCOMPARE(i.grupos.value("12").vendido, 4.0);
        // Closed, the day's totals per group agree with the journal as well.
        CierreDia cierre(env->ctx);
        QVERIFY(cierre.cerrar(env->clock.today().addDays(1), true).hecho);
        i = verificarDiario(db(), fecha);
        QVERIFY2(i.correcto(), qPrintable(i.diferencias.join('\n')));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', premios, monto_porpagar) FROM ventas_ganadores_general WHERE "
                              "grupo = '07' AND fecha = ?",
                        {fecha}),
                 QString("92.5:31.25"));
        // A daily total changed afterwards no longer agrees.
        db().exec("UPDATE ventas_ganadores_general SET premios = premios - 10 WHERE grupo = '07' AND fecha = ?", {fecha});
        QVERIFY(!verificarDiario(db(), fecha).correcto());
    }

    void tampering_data() {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<int>("primeraMala");  // position (1-based, by id) of the first bad row; 0: chains intact
        QTest::newRow("an amount edited") << "UPDATE diario SET monto = monto + 1 WHERE id = @dos" << 2;
        QTest::newRow("a row deleted") << "DELETE FROM diario WHERE id = @dos" << 3;
        QTest::newRow("a row inserted") << "INSERT" << 2;
        QTest::newRow("the last row deleted") << "DELETE FROM diario WHERE id = @ultima" << 0;
        QTest::newRow("a ticket's units edited") << "UPDATE ma_principal SET ganadores = ganadores + 1 LIMIT 1" << 0;
    }
    void tampering() {
        QFETCH(QString, cambio);
        QFETCH(int, primeraMala);
        VentaGanadores v = ventaCargada(env->ctx);
        for (const char* caballo : {"1", "2", "3", "5"}) vender(v, caballo, "2");
        const QList<long long> ids = [&] {
            QList<long long> out;
            for (const Row& r : db().query("SELECT id FROM diario ORDER BY id")) out << r.integer("id");
            return out;
        }();
        QCOMPARE(ids.size(), 4);
        QVERIFY(verificarDiario(db(), fecha).correcto());
        if (cambio == "INSERT") {
            // Slipped in after the first row: the later rows move one place on,
            // and the chain's end is set back to the first row so that the
            // server takes the row as following it.
            db().exec("UPDATE diario SET orden = orden + 1 WHERE id > ? ORDER BY orden DESC", {ids[0]});
            db().exec("UPDATE diario_cola c JOIN diario d ON d.cadena = c.cadena SET c.orden = 1, c.huella = d.huella "
                      "WHERE d.id = ?",
                      {ids[0]});
            // In a transaction, as the server takes journal rows only so.
            db().inTransaction([&] {
                db().exec("INSERT INTO diario (cadena, orden, momento, usuario, maquina, operacion, tabla, codigo, "
                          "grupo, fecha, carrera, unidades, monto, previo, huella) SELECT cadena, 2, momento, usuario, "
                          "maquina, operacion, tabla, 'X', grupo, fecha, carrera, 1, 10, huella, REPEAT('0', 64) FROM "
                          "diario WHERE id = ?",
                          {ids[0]});
            });
        } else {
            db().exec("SET @dos = ?, @ultima = ?", {ids[1], ids[3]});
            db().exec(cambio.toStdString());
        }
        const InformeDiario i = verificarDiario(db(), fecha);
        QVERIFY(!i.correcto());
        QVERIFY(!i.diferencias.isEmpty());
        if (primeraMala > 0) QCOMPARE(i.primeraMala.value_or(0), ids[primeraMala - 1]);
        else QVERIFY(!i.primeraMala);
        env->dialogs.clear();
    }

    // Connections of one machine append to one chain: each follows the end it
    // left without reading it, and when another one wrote since (or its own
    // transaction was rolled back) the server refuses the row and it reads the
    // end again. The chain stays whole.
    void connectionsOfOneMachineShareItsChain() {
        const auto asentar = [&](Db& d, const QString& codigo) {
            d.inTransaction([&] { anotar(d, {operacion::Cierre, {}, codigo, "07", fecha, 0, 0, 0}); });
        };
        std::shared_ptr<Db> a = env->connect(), b = env->connect();
        a->firmarMaquina("CAJA-1");
        b->firmarMaquina("CAJA-1");
        asentar(*a, "A1");
        asentar(*b, "B1");
        asentar(*a, "A2");  // a's end is b's row's predecessor: refused, read again
        // A rolled-back transaction takes its row and the end it left with it.
        QVERIFY_THROWS_EXCEPTION(DbError, a->inTransaction([&] {
            anotar(*a, {operacion::Cierre, {}, "DESHECHA", "07", fecha, 0, 0, 0});
            throw DbError("deshecha");
        }));
        QVERIFY(!a->finCadena());
        asentar(*a, "A3");
        // Many appends of both at the same time.
        std::thread otra([&] {
            for (int k = 0; k < 40; ++k) asentar(*b, QString("B%1").arg(k + 2));
        });
        for (int k = 0; k < 40; ++k) asentar(*a, QString("A%1").arg(k + 4));
        otra.join();
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', count(*), min(orden), max(orden), count(DISTINCT orden)) FROM "
                              "diario WHERE cadena = 'CAJA-1'"),
                 QString("84:1:84:84"));
        QCOMPARE(textOf(db(), "SELECT count(*) FROM diario WHERE codigo = 'DESHECHA'"), QString("0"));
        const InformeDiario i = verificarDiario(db(), fecha);
        QVERIFY2(i.correcto(), qPrintable(i.diferencias.join('\n')));
    }

    void theHorsesTotalsFollowEveryTicket() {
        VentaGanadores v = ventaCargada(env->ctx);
        vender(v, "3", "5");
        const auto b = vender(v, "3", "2,5");
        vender(v, "4", "1");
        venderBoleto(db(), env->clock.today(), 1, 3, 7, "08", "LOS PINOS");
        env->dialogs.type(b.codigo).type("ANULADO").yes();
        QVERIFY(v.anularBoleto());
        QCOMPARE(totalesCaballos(), sumasBoletos());
        QCOMPARE(totalesCaballos(), QString("1:3:LOS PINOS:07:5:1,1:3:LOS PINOS:08:7:1,1:4:LOS PINOS:07:1:1"));
        db().exec("DELETE FROM ma_principal WHERE grupo = '08'");
        QCOMPARE(totalesCaballos(), sumasBoletos());
        // Every sale counted on its horse's race-card row on a cluster, where
        // that write makes the close conflict with it; a single server leaves it.
        QCOMPARE(textOf(db(), "SELECT sum(boletos) FROM carreras"), db().enCluster() ? QString("3") : QString("0"));
        env->dialogs.clear();
    }
};

QTEST_MAIN(TstDiario)
#include "tst_diario.moc"
