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

void prepararDia(Db& db) {
    diaGrande(db, 1000000, 200000);
    const std::string grupo = kGrupoDeSeq, centro = kCentroDeSeq;
    db.exec(std::string("INSERT INTO macuares (boleto, fecha, hora, monto, veces, v1, v2, v3, v4, v5, v6, v7, grupo, "
                        "taquilla, combinacion, estatus) SELECT CONCAT('5', seq), ?, '10:00:00', 20, 1, 1, 2, 3, 4, 5, "
                        "6, 7, ") +
                grupo + ", " + centro + ", '1-2-3-4-5-6-7', IF(seq % 100 = 5, 1, 0) FROM seq_1_to_100000",
            {kDiaGrande});
    db.exec("ANALYZE TABLE macuares");
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
    std::printf("1,000,000 winner, 200,000 fixed-table and 100,000 Macuare tickets, %d groups in 2 centres\n", kGruposDiaGrande);

    const QDate siguiente = QDate::fromString(kDiaGrande, "yyyy-MM-dd").addDays(1);
    CierreDia cierre(ctx);
    CierreDia::Salida s;
    const double primera = segundos([&] { s = cierre.cerrar(std::max(siguiente, reloj.today().addDays(1)), true); });
    if (!s.hecho) {
        std::printf("close refused: %s\n", qPrintable(s.negado));
        return 1;
    }
    std::printf("close:           %.2f s  (%lld + %lld + %lld tickets kept)\n", primera, s.hecho->ganadores,
                s.hecho->tablaFija, s.hecho->macuare);
    db.exec("UPDATE configuracion SET fecha = ?", {kDiaGrande});
    const double segunda = segundos([&] { s = cierre.cerrar(std::max(siguiente, reloj.today().addDays(1)), true); });
    std::printf("close again:     %.2f s  (copies and totals replaced)\n", segunda);
    return 0;
}
