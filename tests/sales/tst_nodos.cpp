// The loss of a cluster node while booths sell (run by `scripts/test
// --cluster`; skipped on a single server): the booths connected to the lost
// node follow the cluster to the other nodes and sell again within seconds,
// and no code is duplicated, no quota oversold, no ticket committed after
// the close, no sale lost and none sold without the booth knowing.
#include "BoothFixture.h"

#include "core/Diario.h"

#include <QProcess>
#include <QtTest>
#include <atomic>
#include <chrono>
#include <csignal>
#include <mutex>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

using Reloj = std::chrono::steady_clock;

double segundosDesde(Reloj::time_point t0) {
    return std::chrono::duration<double>(Reloj::now() - t0).count();
}

}  // namespace

class TstNodos : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString dirCluster;

private slots:
    void initTestCase() {
        dirCluster = qEnvironmentVariable("HIPICO_CLUSTER_DIR");
        if (qEnvironmentVariable("HIPICO_DB_PORTS").split(',', Qt::SkipEmptyParts).size() < 3 || dirCluster.isEmpty())
            QSKIP("sólo en el cluster (scripts/test --cluster)");
        env = entorno("nodos", carpeta.path());
        empezarDia(*env, carpeta.filePath("boletos.prn"));
    }

    void boothsFollowTheClusterThroughTheLossOfANode() {
        const QString fecha = fechaSql(env->clock.today());
        env->db().exec("update venta_cupo_ganadores set cab8=300 where ch='LOS PINOS'");
        env->db().exec("update grupos set pedirclave=0, apuesta_max_win=0");
        constexpr int kCabinas = 6;
        std::vector<std::unique_ptr<Taquilla>> cabinas;
        for (int i = 0; i < kCabinas; ++i) {
            cabinas.push_back(std::make_unique<Taquilla>(*env, env->ctx.session));
            cabinas.back()->ctx.cnServidor->firmarMaquina(QStringLiteral("TAQ%1").arg(i));
        }
        std::atomic<bool> fin{false}, cerrada{false};
        std::mutex cerrojo;
        QStringList vendidos;
        std::atomic<long> trasCierre{0};
        const auto inicio = Reloj::now();
        std::atomic<double> caida{-1};
        std::vector<double> ultimaVenta(kCabinas, 0);
        std::vector<std::thread> hilos;
        for (int i = 0; i < kCabinas; ++i)
            hilos.emplace_back([&, i] {
                Taquilla& t = *cabinas[i];
                for (int k = 0; !fin; ++k) {
                    const bool despues = cerrada;
                    try {
                        const auto r = t.venta.procesarVenta("1", QString::number(1 + (k + i) % 8), "1");
                        if (r.resultado != VentaGanadores::Resultado::Vendido) continue;
                        const std::lock_guard<std::mutex> g(cerrojo);
                        vendidos << r.boleto.codigo;
                        ultimaVenta[i] = segundosDesde(inicio);
                        if (despues) ++trasCierre;
                    } catch (const DbError&) {
                        // The booth's command failed (its node went away): the operator tries again.
                        std::this_thread::sleep_for(std::chrono::milliseconds(200));
                    }
                }
            });
        QTest::qWait(2000);
        // Node 2 dies without a word.
        QFile pid(dirCluster + "/node2/mysqld.pid");
        QVERIFY(pid.open(QIODevice::ReadOnly));
        QVERIFY(::kill(pid.readAll().trimmed().toInt(), SIGKILL) == 0);
        caida = segundosDesde(inicio);
        QTest::qWait(15000);
        // Every booth sold again after the loss.
        for (int i = 0; i < kCabinas; ++i)
            QVERIFY2(ultimaVenta[i] > caida + 1, qPrintable(QStringLiteral("taquilla %1").arg(i)));
        auto admin = env->connect();
        admin->inTransaction([&] { admin->exec("update carreras set estado_puestos='0',venta='0' Where carrera = ? and fecha = ? and "
                    "id_hipodromo = ? ",
                    {1, fecha, 1}); });
        cerrada = true;
        const long long alCierre = Row::toInteger(admin->scalar("SELECT count(*) FROM ma_principal"));
        QTest::qWait(2000);
        fin = true;
        for (auto& h : hilos) h.join();
        // A sale left unknown by the loss is settled at the booth's next sale.
        for (auto& t : cabinas) {
            const auto r = t->venta.procesarVenta("1", "1", "1");
            if (r.resultado == VentaGanadores::Resultado::Vendido) vendidos << r.boleto.codigo;
        }
        Db& db = *admin;
        QCOMPARE(Row::toInteger(db.scalar("SELECT count(*) - count(distinct nu_boleto) FROM ma_principal")), 0LL);
        QCOMPARE(Row::toInteger(db.scalar("SELECT count(*) FROM ma_principal")), alCierre);
        QCOMPARE(trasCierre.load(), 0L);
        QVERIFY(Row::toNumber(db.scalar("SELECT sum(ganadores) FROM ma_principal WHERE caballo = 8")) <= 300);
        QStringList guardados;
        for (const Row& r : db.query("SELECT nu_boleto FROM ma_principal")) guardados << r.text("nu_boleto");
        guardados.sort();
        vendidos.sort();
        // Nothing lost, nothing the booths were not told of.
        QStringList perdidos, ignorados;
        for (const QString& c : vendidos)
            if (!guardados.contains(c)) perdidos << c;
        for (const QString& c : guardados)
            if (!vendidos.contains(c)) ignorados << c;
        QVERIFY2(perdidos.isEmpty() && ignorados.isEmpty() && guardados.size() == vendidos.size(),
                 qPrintable("perdidos: " + perdidos.join(',') + " ignorados: " + ignorados.join(',') +
                            QString(" (%1 guardados, %2 vendidos)").arg(guardados.size()).arg(vendidos.size())));
        const InformeDiario informe = verificarDiario(db, fecha);
        QVERIFY2(informe.correcto(), qPrintable(informe.diferencias.join('\n')));
    }

    // The node comes back for the tests that follow, also after a failure.
    void cleanupTestCase() {
        if (env) QCOMPARE(QProcess::execute(qEnvironmentVariable("HIPICO_CLUSTER_SCRIPT"), {"start"}), 0);
    }
};

QTEST_MAIN(TstNodos)
#include "tst_nodos.moc"
