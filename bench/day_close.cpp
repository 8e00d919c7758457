// The close of a big day: 1,000,000 winner tickets, 200,000 fixed-table and
// 100,000 Macuare tickets over 60 groups in 2 centres. Times the close (kept
// copies, daily totals per group and game, the next day opened) and a second
// close of the same day, which replaces what the first wrote.
#include "BenchSupport.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "signin/CierreDia.h"

#include <QCoreApplication>

using namespace hipico;
using namespace hipico::bench;

namespace {

const QString kFecha = QStringLiteral("2026-11-23");
constexpr int kGrupos = 60;

void prepararDia(Db& db) {
    db.exec("INSERT INTO configuracion (id, fecha, carrera, id_hipodromo, valor_ganador) VALUES (1, ?, 1, 1, 10)",
            {kFecha});
    db.exec("INSERT INTO hipodromos (id_hipodromo, hipodromo) VALUES (1, 'LA RINCONADA')");
    for (int carrera = 1; carrera <= 8; ++carrera)
        for (int n = 1; n <= 12; ++n)
            db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, venta) "
                    "VALUES (?, ?, 1, ?, ?, ?)",
                    {kFecha, carrera, QString("CABALLO %1").arg(n), n, carrera == 8 ? 1 : 0});
    for (int g = 1; g <= kGrupos; ++g)
        db.exec("INSERT INTO grupos (grupo, ch, subgrupo, valor_ganador) VALUES (?, ?, 'S1', 10)",
                {QString("G%1").arg(g, 2, 10, QChar('0')), g <= kGrupos / 2 ? "CENTRO NORTE" : "CENTRO SUR"});
    const char* const grupo = "CONCAT('G', LPAD(1 + seq % 60, 2, '0'))";
    const char* const centro = "IF(seq % 60 < 30, 'CENTRO NORTE', 'CENTRO SUR')";
    // Every tenth ticket a winner due, every twentieth paid, every fiftieth a refund due.
    const char* const estatus = "CASE WHEN seq % 50 = 7 THEN 4 WHEN seq % 20 = 3 THEN 2 WHEN seq % 10 = 1 THEN 1 ELSE 0 END";
    db.exec(std::string("INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, hora, fecha, cobrado, estatus, "
                        "nu_boleto, subgrupo) SELECT 1 + seq % 8, 1 + seq % 12, 1 + seq % 5, ") +
                centro + ", " + grupo + ", '10:00:00', ?, IF(" + estatus + " = 0, 0, 25), " + estatus +
                ", CONCAT('1', seq), 'S1' FROM seq_1_to_1000000",
            {kFecha});
    db.exec(std::string("INSERT INTO tablafija (carrera, caballo, tablas, monto, ch, grupo, hora, fecha, cobrado, "
                        "estatus, nu_boleto) SELECT 1 + seq % 8, 1 + seq % 12, 1 + seq % 3, 5 * (1 + seq % 3), ") +
                centro + ", " + grupo + ", '10:00:00', ?, IF(" + estatus + " = 0, 0, 40), " + estatus +
                ", CONCAT('2', seq) FROM seq_1_to_200000",
            {kFecha});
    db.exec(std::string("INSERT INTO macuares (boleto, fecha, hora, monto, veces, v1, v2, v3, v4, v5, v6, v7, grupo, "
                        "taquilla, combinacion, estatus) SELECT CONCAT('5', seq), ?, '10:00:00', 20, 1, 1, 2, 3, 4, 5, "
                        "6, 7, ") +
                grupo + ", " + centro + ", '1-2-3-4-5-6-7', IF(seq % 100 = 5, 1, 0) FROM seq_1_to_100000",
            {kFecha});
    for (const char* t : {"ma_principal", "tablafija", "macuares"}) db.exec(std::string("ANALYZE TABLE ") + t);
}

double segundos(const std::function<void()>& fn) {
    const auto t0 = bench::Clock::now();
    fn();
    return microsSince(t0) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const Config c = benchConfig("b_day_close");
    freshCentral(c);
    ScriptedDialogs dialogs;
    SystemClock reloj;
    Context ctx(c, dialogs, reloj);
    ctx.cnServidor = Db::open(cadenaServidor(c));
    Db& db = *ctx.cnServidor;
    prepararDia(db);
    ctx.session.usuario = QStringLiteral("admin");
    std::printf("innodb_flush_log_at_trx_commit=%s\n", qPrintable(flushSetting(db)));
    std::printf("1,000,000 winner, 200,000 fixed-table and 100,000 Macuare tickets, %d groups in 2 centres\n", kGrupos);

    const QDate siguiente = QDate::fromString(kFecha, "yyyy-MM-dd").addDays(1);
    CierreDia cierre(ctx);
    CierreDia::Salida s;
    const double primera = segundos([&] { s = cierre.cerrar(std::max(siguiente, reloj.today().addDays(1)), true); });
    if (!s.hecho) {
        std::printf("close refused: %s\n", qPrintable(s.negado));
        return 1;
    }
    std::printf("close:           %.2f s  (%lld + %lld + %lld tickets kept)\n", primera, s.hecho->ganadores,
                s.hecho->tablaFija, s.hecho->macuare);
    db.exec("UPDATE configuracion SET fecha = ?", {kFecha});
    const double segunda = segundos([&] { s = cierre.cerrar(std::max(siguiente, reloj.today().addDays(1)), true); });
    std::printf("close again:     %.2f s  (copies and totals replaced)\n", segunda);
    return 0;
}
