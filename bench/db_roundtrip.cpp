// One bound insert of a ticket + its last insert id + a one-row update, the
// floor under every sale: median and p99 on one connection, then eight at once.
#include "BenchSupport.h"
#include "schema/Escritores.h"

#include <QCoreApplication>
#include <thread>

using namespace hipico;
using namespace hipico::bench;


int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const Config c = benchConfig("b_roundtrip");
    freshCentral(c);
    const QString conn = cadenaServidor(c);

    auto db = Db::open(conn);
    for (int k = 0; k < 200; ++k) ticketFloor(*db, k);  // warm-up
    std::vector<double> one;
    for (int k = 0; k < 3000; ++k) {
        const auto t0 = Clock::now();
        ticketFloor(*db, k);
        one.push_back(microsSince(t0));
    }
    std::printf("innodb_flush_log_at_trx_commit=%s\n", qPrintable(flushSetting(*db)));
    std::printf("one connection: %zu round trips, median %.0f us, p99 %.0f us\n", one.size(), percentile(one, 50),
                percentile(one, 99));

    constexpr int kThreads = 8, kEach = 1500;
    std::vector<std::vector<double>> lat(kThreads);
    const auto t0 = Clock::now();
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            auto mine = Db::open(conn);
            for (int k = 0; k < kEach; ++k) {
                const auto s = Clock::now();
                ticketFloor(*mine, k);
                lat[t].push_back(microsSince(s));
            }
        });
    }
    for (auto& th : threads) th.join();
    const double seconds = microsSince(t0) / 1e6;
    std::vector<double> all;
    for (auto& v : lat) all.insert(all.end(), v.begin(), v.end());
    std::printf("eight connections: %zu round trips in %.2f s (%.0f per second), median %.0f us, p99 %.0f us\n",
                all.size(), seconds, all.size() / seconds, percentile(all, 50), percentile(all, 99));

    // Reading a large result (a report's ticket list): 100,000 rows of every column.
    db->exec("INSERT INTO ma_principal (caballo, carrera, ganadores, ch, grupo, hora, fecha, cobrado, estatus, nu_boleto) "
             "SELECT 1 + seq % 12, 1 + seq % 9, 2, 'LOS PINOS', '07', '10:00:00', '2026-11-23', 0, 0, seq "
             "FROM seq_1_to_200000");
    std::vector<double> lecturas;
    qsizetype filas = 0;
    for (int k = 0; k < 3; ++k) {
        const auto t = Clock::now();
        filas = db->query("SELECT * FROM ma_principal LIMIT 100000").size();
        lecturas.push_back(microsSince(t) / 1e6);
    }
    std::printf("reading %lld rows of every column: median %.2f s\n", static_cast<long long>(filas),
                percentile(lecturas, 50));
    return 0;
}
