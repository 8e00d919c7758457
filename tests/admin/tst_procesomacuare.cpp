// The Macuare settlement against the real server, on hand-computed days:
// the pool (sales less the house share plus what was carried), each
// winner's share in proportion to amount x veces cut to the cent, a day with
// no winner carrying its pool, a dead-heat leg, a pick scratched after the
// sale running as the favourite, settling again after a corrected leg with a
// paid ticket left alone, the tickets still alive by group, and refusals.
#include "admin/CombinacionesMacuare.h"
#include "admin/ProcesoMacuare.h"
#include "core/Formato.h"
#include "schema/Demo.h"
#include "schema/Escritores.h"
#include "sales/VentaMacuare.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstProcesoMacuare : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString hoy, ayer;

    Db& db() { return env->db(); }
    ProcesoMacuare proceso() { return ProcesoMacuare(env->ctx); }

    // A ticket of the day as the sale leaves it.
    long long boleto(const QString& picks, double monto, long long veces, const QString& grupo = "07",
                     const QString& fecha = {}) {
        BoletoMacuare b;
        b.fecha = fecha.isEmpty() ? hoy : fecha;
        b.hora = "10:00:00";
        b.monto = monto;
        b.veces = veces;
        const QStringList p = picks.split('-');
        for (int i = 0; i < 7; ++i) b.v[i] = p[i].toLongLong();
        b.grupo = grupo;
        b.taquilla = grupo == "12" ? "MARACAY" : "LOS PINOS";
        b.combinacion = picks;
        const long long n = insertar(db(), b.insercion());
        db().exec("UPDATE macuares SET boleto = CONCAT('5', numero) WHERE numero = ?", {n});
        return n;
    }
    QString estado(long long numero) {
        return textOf(db(), "SELECT concat(estatus, ':', cobrado) FROM macuares WHERE numero = ?", {numero});
    }
    // Every leg's winner at once (the seventh settles).
    std::optional<Liquidacion> ganan(const QString& fecha, const QVector<QVector<long long>>& g) {
        std::optional<Liquidacion> l;
        for (int i = 0; i < 7; ++i) l = proceso().fijarGanadores(fecha, i, g[i]);
        return l;
    }
    static QVector<QVector<long long>> todos(long long n) { return QVector<QVector<long long>>(7, {n}); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("procesomacuare", true);
        hoy = fechaSql(env->clock.today());
        ayer = fechaSql(env->clock.today().addDays(-1));
    }

    void init() {
        env->loadDemo();
        cargarDemoMacuare(db(), env->clock.today());
        db().exec("DELETE FROM macuares");
        db().exec("DELETE FROM combinaciones_general");
        db().exec("DELETE FROM caballos_ganadores");
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    // Sales 100, house 20 %: a pool of 80 for the one ticket that hit every leg.
    void oneWinner() {
        const long long t1 = boleto("1-1-1-1-1-1-1", 10, 2);
        const long long t2 = boleto("2-1-1-1-1-1-1", 30, 1, "12");
        const long long t3 = boleto("1-1-1-1-1-1-2", 50, 1);
        std::optional<Liquidacion> l;
        for (int i = 0; i < 6; ++i) {
            l = proceso().fijarGanadores(hoy, i, {1});
            QVERIFY(l && !l->hecha);  // not settled before the seventh leg
        }
        QCOMPARE(estado(t1), QString("0:0"));
        l = proceso().fijarGanadores(hoy, 6, {1});
        QVERIFY(l && l->hecha);
        QCOMPARE(l->venta, 100.0);
        QCOMPARE(l->casa, 20.0);
        QCOMPARE(l->pozo, 80.0);
        QCOMPARE(l->ganadores, 1LL);
        QCOMPARE(estado(t1), QString("1:80"));
        QCOMPARE(estado(t2), QString("0:0"));
        QCOMPARE(estado(t3), QString("0:0"));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', venta, premios, saldo, monto_porpagar) FROM ventas_mc_general "
                              "WHERE grupo = '07' AND fecha = ?",
                        {hoy}),
                 QString("0:0:0:0"));
        // Paid at the desk: the group's day row moves as a booth's payment moves it.
        env->dialogs.type("COBRADO");
        QVERIFY(proceso().pagarBoleto(textOf(db(), "SELECT boleto FROM macuares WHERE numero = ?", {t1})));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', venta, premios, saldo, monto_porpagar) FROM ventas_mc_general "
                              "WHERE grupo = '07' AND fecha = ?",
                        {hoy}),
                 QString("0:80:-80:-80"));
        QCOMPARE(estado(t1), QString("2:80"));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', estatus, motivo) FROM bitacora_mc"), QString("2:COBRADO"));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', c1_1, c7_1, c7_2) FROM caballos_ganadores WHERE fecha = ?", {hoy}),
                 QString("1:1:0"));
        const auto guardada = proceso().liquidacion(hoy);
        QVERIFY(guardada);
        QCOMPARE(guardada->pozo, 80.0);
        QCOMPARE(guardada->arrastreSiguiente, 0.0);
    }

    // Weights 20 and 10 share 88: 58,66 and 29,33 (cut to the cent).
    void severalWinners() {
        const long long a = boleto("1-1-1-1-1-1-1", 10, 2);
        const long long b = boleto("1-1-1-1-1-1-1", 10, 1, "12");
        boleto("2-1-1-1-1-1-1", 30, 1);
        boleto("1-1-1-1-1-1-2", 50, 1);
        const auto l = ganan(hoy, todos(1));
        QVERIFY(l && l->hecha);
        QCOMPARE(l->pozo, 88.0);
        QCOMPARE(l->ganadores, 2LL);
        QCOMPARE(estado(a), QString("1:58.66"));
        QCOMPARE(estado(b), QString("1:29.33"));
        QCOMPARE(l->repartido, 87.99);
    }

    // No winner yesterday: its pool of 80 carries; today's 50 of sales less
    // 10 for the house plus 80 pays the one winner 120.
    void noWinnerCarriesThePool() {
        db().exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, retirado, favorito) "
                  "SELECT ?, carrera, id_hipodromo, caballo, nu_caballo, retirado, favorito FROM carreras WHERE fecha = ?",
                  {ayer, hoy});
        db().exec("INSERT INTO macuare_dias (fecha, id_hipodromo, carrera1, porcentaje_casa) VALUES (?, 1, 1, 20)", {ayer});
        boleto("2-2-2-2-2-2-2", 60, 1, "07", ayer);
        boleto("3-3-3-3-3-3-3", 40, 1, "12", ayer);
        const auto l1 = ganan(ayer, todos(1));
        QVERIFY(l1 && l1->hecha);
        QCOMPARE(l1->ganadores, 0LL);
        QCOMPARE(l1->arrastreSiguiente, 80.0);
        const long long t = boleto("1-1-1-1-1-1-1", 25, 2);
        const auto l2 = ganan(hoy, todos(1));
        QVERIFY(l2 && l2->hecha);
        QCOMPARE(l2->arrastre, 80.0);
        QCOMPARE(l2->pozo, 120.0);
        QCOMPARE(estado(t), QString("1:120"));
        QCOMPARE(l2->arrastreSiguiente, 0.0);
    }

    // A dead heat in leg 3: both horses hit it.
    void deadHeatLeg() {
        const long long a = boleto("1-1-1-1-1-1-1", 10, 1);
        const long long b = boleto("1-1-2-1-1-1-1", 30, 1);
        const long long c = boleto("1-1-3-1-1-1-1", 60, 1);
        QVector<QVector<long long>> g = todos(1);
        g[2] = {1, 2};
        const auto l = ganan(hoy, g);
        QVERIFY(l && l->hecha);
        QCOMPARE(l->pozo, 80.0);
        QCOMPARE(estado(a), QString("1:20"));
        QCOMPARE(estado(b), QString("1:60"));
        QCOMPARE(estado(c), QString("0:0"));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', c3_1, c3_2, c3_3) FROM caballos_ganadores WHERE fecha = ?", {hoy}),
                 QString("1:2:0"));
    }

    // Horse 6 of race 4 is scratched after the sale: the pick runs as the
    // favourite (5), hitting when 5 won and missing when 1 won.
    void scratchedPickRunsAsTheFavourite() {
        const long long r = boleto("1-1-1-6-1-1-1", 40, 1);
        const long long f = boleto("1-1-1-5-1-1-1", 10, 1);
        const long long u = boleto("1-1-1-1-1-1-1", 50, 1);
        db().exec("UPDATE carreras SET retirado = 1 WHERE fecha = ? AND id_hipodromo = 1 AND carrera = 4 AND "
                  "nu_caballo = 6",
                  {hoy});
        QVector<QVector<long long>> g = todos(1);
        g[3] = {5};
        QVERIFY(ganan(hoy, g));
        QCOMPARE(estado(r), QString("1:64"));
        QCOMPARE(estado(f), QString("1:16"));
        QCOMPARE(estado(u), QString("0:0"));
        // Corrected: leg 4 won by 1. The scratched pick misses.
        const auto l = proceso().fijarGanadores(hoy, 3, {1});
        QVERIFY(l && l->hecha);
        QCOMPARE(estado(r), QString("0:0"));
        QCOMPARE(estado(f), QString("0:0"));
        QCOMPARE(estado(u), QString("1:80"));
    }

    // Settling again resets the due tickets and settles anew; a paid ticket
    // keeps its status and amount.
    void resettlementLeavesPaidTickets() {
        const long long a = boleto("1-1-1-1-1-1-1", 20, 1);
        const long long b = boleto("1-1-1-1-1-1-2", 50, 1);
        boleto("2-1-1-1-1-1-1", 30, 1);
        QVERIFY(ganan(hoy, todos(1)));
        QCOMPARE(estado(a), QString("1:80"));
        QVERIFY(proceso().fijarGanadores(hoy, 6, {2}));
        QCOMPARE(estado(a), QString("0:0"));
        QCOMPARE(estado(b), QString("1:80"));
        db().exec("UPDATE macuares SET estatus = 2, fecha_cobro = ? WHERE numero = ?", {hoy, b});
        QVERIFY(proceso().liquidar(hoy));
        QCOMPARE(estado(b), QString("2:80"));
        QVERIFY(proceso().fijarGanadores(hoy, 6, {1}));
        QCOMPARE(estado(a), QString("1:80"));
        QCOMPARE(estado(b), QString("2:80"));
        // Clearing a leg undoes the settlement of the due tickets only.
        QVERIFY(proceso().fijarGanadores(hoy, 6, {}));
        QCOMPARE(estado(a), QString("0:0"));
        QCOMPARE(estado(b), QString("2:80"));
        QVERIFY(!proceso().liquidacion(hoy));
        QVERIFY(!proceso().liquidar(hoy));
        QCOMPARE(env->dialogs.last().text, QString("FALTAN GANADORES: LAS SIETE CARRERAS DEBEN TENER SU GANADOR"));
    }

    // The tickets and combinations still alive after each leg, by group.
    void aliveByGroup() {
        boleto("1-1-1-1-1-1-1", 10, 1, "07");
        boleto("1-1-1-1-1-1-1", 10, 2, "07");
        boleto("1-2-1-1-1-1-1", 10, 1, "07");
        boleto("2-1-1-1-1-1-1", 10, 1, "12");
        boleto("1-3-1-1-1-1-1", 5, 1, "12");
        auto v = proceso().vivos(hoy);
        QCOMPARE(v.size(), 2);
        QCOMPARE(v[0].boletos, 3LL);
        QCOMPARE(v[0].combinaciones, 2LL);
        QVERIFY(proceso().fijarGanadores(hoy, 0, {1}));
        v = proceso().vivos(hoy);
        QCOMPARE(v.size(), 2);
        QCOMPARE(v[1].grupo, QString("12"));
        QCOMPARE(v[1].boletos, 1LL);
        QVERIFY(proceso().fijarGanadores(hoy, 1, {1}));
        v = proceso().vivos(hoy);
        QCOMPARE(v.size(), 1);
        QCOMPARE(v[0].grupo, QString("07"));
        QCOMPARE(v[0].boletos, 2LL);
        QCOMPARE(v[0].combinaciones, 1LL);
        QCOMPARE(v[0].monto, 30.0);
    }

    void refusals_data() {
        QTest::addColumn<int>("pierna");
        QTest::addColumn<QVector<long long>>("caballos");
        QTest::newRow("pierna 8") << 7 << QVector<long long>{1};
        QTest::newRow("no corre") << 6 << QVector<long long>{7};
        QTest::newRow("cero") << 0 << QVector<long long>{0};
        QTest::newRow("repetido") << 0 << QVector<long long>{1, 1};
        QTest::newRow("cuatro") << 0 << QVector<long long>{1, 2, 3, 4};
    }
    void refusals() {
        QFETCH(int, pierna);
        QFETCH(QVector<long long>, caballos);
        const QStringList antes = foto(db(), {"caballos_ganadores", "macuares"});
        QVERIFY(!proceso().fijarGanadores(hoy, pierna, caballos));
        QCOMPARE(env->dialogs.last().text, QString("DEBE COLOCAR UN Nº CABALLO VALIDO"));
        QCOMPARE(env->dialogs.last().title, QString("VALIDACIÓN DE DATOS"));
        QCOMPARE(foto(db(), {"caballos_ganadores", "macuares"}), antes);
    }

    // The combinations report writes the day's tickets into rpt_macuare and
    // leaves the program's rsCombinaciones on it; the sale reopens it on the
    // central register before it reads it.
    void combinationsShareTheirRecordset() {
        boleto("1-1-1-1-1-1-1", 10, 2);
        boleto("1-1-1-1-1-1-1", 5, 1, "12");
        boleto("2-1-1-1-1-1-1", 7, 1);
        db().exec("INSERT INTO combinaciones_general (combinacion, fecha, estatus, monto) VALUES "
                  "('1-1-1-1-1-1-1', ?, 1, 25), ('2-1-1-1-1-1-1', ?, 0, 7)",
                  {hoy, hoy});
        const auto c = combinacionesDelDia(env->ctx, hoy);
        QCOMPARE(c.size(), 2);
        QCOMPARE(c[0].combinacion, QString("1-1-1-1-1-1-1"));
        QCOMPARE(c[0].boletos, 2LL);
        QCOMPARE(c[0].monto, 25.0);
        QCOMPARE(llenarRptMacuare(env->ctx, hoy), 3LL);
        QCOMPARE(env->ctx.rs("rsCombinaciones").table(), QString("rpt_macuare"));
        QCOMPARE(env->ctx.rs("rsCombinaciones").size(), 3);
        QCOMPARE(textOf(env->local(), "SELECT concat_ws(':', v1, monto, veces, fecha, taquilla, ch) FROM rpt_macuare "
                                      "ORDER BY id_rpt LIMIT 1"),
                 "1:10:2:" + fechaVista(hoy) + ":LOS PINOS:LOS PINOS");
        db().exec("UPDATE macuares SET estatus = 2, cobrado = 50 WHERE combinacion = '2-1-1-1-1-1-1'");
        QCOMPARE(llenarRptDiarioMC(env->ctx, hoy), 2LL);
        QCOMPARE(textOf(env->local(), "SELECT concat_ws(':', ch, chipico, venta, cant_ganadores, total_premios, "
                                      "premios_cobrados, saldo, fecha_inicio) FROM rpt_diario_mc ORDER BY ch LIMIT 1"),
                 "07:LOS PINOS:27:1:50:50:-23:" + fechaVista(hoy));
        VentaMacuare venta(env->ctx);
        QCOMPARE(venta.combinacionesDelDia(), 2LL);
        QCOMPARE(env->ctx.rs("rsCombinaciones").table(), QString("combinaciones_general"));
    }

    void legsCannotChangeOnceSold() {
        QVERIFY(proceso().configurar(hoy, 2, 1, 25));
        QCOMPARE(proceso().dia(hoy).porcentajeCasa, 25.0);
        boleto("1-1-1-1-1-1-1", 10, 1);
        QVERIFY(!proceso().configurar(hoy, 1, 2, 20));
        QCOMPARE(env->dialogs.last().text,
                 QString("YA HAY BOLETOS VENDIDOS, NO SE PUEDEN CAMBIAR LAS CARRERAS DEL MACUARE"));
        QCOMPARE(proceso().dia(hoy).hipodromo, 2LL);
    }
};

QTEST_GUILESS_MAIN(TstProcesoMacuare)
#include "tst_procesomacuare.moc"
