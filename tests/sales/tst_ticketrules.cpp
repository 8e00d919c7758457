// Ticket codes and tamper keys, through real rows: a true ticket passes the
// payment checks and each kind of alteration is caught (the booth's messages
// for them are in tst_juegos); the processed-race rule of the void.
#include "sales/JuegoGanadores.h"
#include "sales/TicketKeys.h"
#include "support/Boletos.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstTicketRules : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    long long vender(int carrera, int caballo, double ganadores) {
        return venderBoleto(env->db(), env->clock.today(), carrera, caballo, ganadores, "07", "LOS PINOS");
    }
    void liquidar(int carrera, int caballo, double dividendo) {
        test::liquidar(env->db(), "2026-11-23", carrera, caballo, dividendo);
    }

    Row boleto(long long numero) {
        return env->db().query("SELECT * FROM ma_principal WHERE numero = ?", {numero}).first();
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("ticketrules");
        env->loadDemo();
    }

    void codes() {
        QCOMPARE(codigoBoleto(prefijoBoleto(1, "07"), QDate(2026, 11, 15), 4521), QString("0711154521"));
        QCOMPARE(codigoBoleto(prefijoBoleto(0, "07"), QDate(2026, 11, 15), 4521), QString("111154521"));
        QCOMPARE(codigoBoleto("1", QDate(2026, 3, 5), 7), QString("103057"));  // month before day
    }

    void trueTicketsPass() {
        const long long a = vender(3, 5, 2);
        QCOMPARE(verificarBoleto(boleto(a), std::nullopt), Alteracion::Ninguna);
        const long long b = vender(3, 5, 2.5);
        liquidar(3, 5, 12.35);
        const Row r = boleto(b);
        QCOMPARE(r.integer("estatus"), 1LL);
        QCOMPARE(r.number("cobrado"), 2.5 * 12.35);
        QCOMPARE(verificarBoleto(r, std::nullopt), Alteracion::Ninguna);
        QCOMPARE(verificarBoleto(boleto(a), r), Alteracion::CopiaGrupo);  // another ticket as its copy
        QCOMPARE(verificarBoleto(r, r), Alteracion::Ninguna);
    }

    void alterations_data() {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<int>("esperada");
        QTest::newRow("horse") << "caballo=caballo+1" << int(Alteracion::Caballo);
        QTest::newRow("race") << "carrera=carrera+1" << int(Alteracion::Carrera);
        QTest::newRow("units") << "ganadores=ganadores*10" << int(Alteracion::Unidades);
        QTest::newRow("payout") << "cobrado=cobrado+100" << int(Alteracion::Premio);
        QTest::newRow("made a winner") << "estatus=1,cobrado=500" << int(Alteracion::Premio);
        QTest::newRow("group") << "grupo='08'" << int(Alteracion::Caballo);
        QTest::newRow("keys zeroed") << "llave='0',llave2='0',llave5='0'" << int(Alteracion::Caballo);
    }

    void alterations() {
        QFETCH(QString, cambio);
        QFETCH(int, esperada);
        const long long n = vender(4, 7, 3);
        liquidar(4, 7, 8.4);
        const Row original = boleto(n);
        env->db().exec(("UPDATE ma_principal SET " + cambio + " WHERE numero = ?").toStdString(), {n});
        const Alteracion a = verificarBoleto(boleto(n), std::nullopt);
        QCOMPARE(int(a), esperada);
        QVERIFY(!mensajeAlteracion(a).isEmpty());
        // The group copy, untouched, also disagrees with the altered row.
        QVERIFY(verificarBoleto(boleto(n), original) != Alteracion::Ninguna);
    }

    void processedRace() {
        Db& db = env->db();
        db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, nu_caballo, win_ganadores) VALUES "
                "('2026-11-23', 5, 1, 1, 0), ('2026-11-23', 5, 1, 2, 0), ('2026-11-23', 6, 2, 1, 4)");
        QVERIFY(!carreraProcesada(db, "2026-11-23", 5));
        QVERIFY(carreraProcesada(db, "2026-11-23", 6));
        QVERIFY(!carreraProcesada(db, "2026-11-24", 6));
    }
};

QTEST_GUILESS_MAIN(TstTicketRules)
#include "tst_ticketrules.moc"
