// Processing one race of a big day: 60 groups in 2 centres, 1,000,000 tickets
// on the race spread over 12 horses. Times the processing, a re-processing
// with a corrected winner and the void of the whole race; then the processing
// of a second race with as many tickets held by only 6 groups (54 groups
// without any winning ticket), which should cost about the same.
#include "BenchSupport.h"
#include "admin/ProcesoCarrera.h"

#include <QCoreApplication>

using namespace hipico;
using namespace hipico::bench;

namespace {

const QString kFecha = QStringLiteral("2026-11-23");
constexpr int kCarrera = 1;       // tickets of all 60 groups
constexpr int kCarreraPocos = 2;  // the same number of tickets, held by 6 groups
constexpr int kBoletos = 1000000;
constexpr int kGrupos = 60;

void prepararDia(Db& db) {
    db.exec("INSERT INTO configuracion (id, fecha, carrera, id_hipodromo, valor_ganador) VALUES (1, ?, 1, 1, 10)",
            {kFecha});
    db.exec("INSERT INTO hipodromos (id_hipodromo, hipodromo) VALUES (1, 'LA RINCONADA')");
    for (int carrera : {kCarrera, kCarreraPocos})
        for (int n = 1; n <= 12; ++n)
            db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, venta, favorito) "
                    "VALUES (?, ?, 1, ?, ?, 0, ?)",
                    {kFecha, carrera, QString("CABALLO %1").arg(n), n, n == 3 ? 1 : 0});
    for (int g = 1; g <= kGrupos; ++g)
        db.exec("INSERT INTO grupos (grupo, ch, subgrupo, valor_ganador, mododiv, rango1, rango2, valor_r1, "
                "rango3, rango4, valor_r2, opciondiv2, rango9, valor_r5, rango10, topefavorito) "
                "VALUES (?, ?, 'S1', 10, ?, 0.01, 2.99, 3, 3, 9.99, 1, 1, 10, 2, 60, 30)",
                {QString("G%1").arg(g, 2, 10, QChar('0')), g <= kGrupos / 2 ? "CENTRO NORTE" : "CENTRO SUR", g % 2});
}

// A race's 1,000,000 tickets, held by the first `grupos` groups, written
// 100,000 at a time (each statement well inside the connection's read limit).
void venderBoletos(Db& db, int carrera, int grupos) {
    for (int desde = 0; desde < kBoletos; desde += 100000)
        db.exec("INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, hora, fecha, nu_boleto, subgrupo) "
                "SELECT ?, 1 + s % 12, 1 + s % 5, IF(s % ? < ?, 'CENTRO NORTE', 'CENTRO SUR'), "
                "CONCAT('G', LPAD(1 + s % ?, 2, '0')), '10:00:00', ?, CONCAT(?, s), 'S1' "
                "FROM (SELECT seq + ? AS s FROM seq_1_to_100000) x",
                {carrera, grupos, grupos / 2, grupos, kFecha, QString("1%1").arg(carrera), desde});
}

PeticionProceso peticion(long long ganador, double dividendo, int carrera = kCarrera) {
    PeticionProceso p;
    p.fecha = kFecha;
    p.carrera = carrera;
    p.idHipodromo = 1;
    p.centro = QStringLiteral("TODOS");
    p.ganadores << GanadorOficial{ganador, dividendo};
    return p;
}

long long ganadoras(Db& db, int carrera = kCarrera) {
    return Row::toInteger(db.scalar("SELECT count(*) FROM ma_principal WHERE carrera = ? AND estatus = 1", {carrera}));
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const Config c = benchConfig("b_process_race");
    freshCentral(c);
    auto db = Db::open(cadenaServidor(c));
    prepararDia(*db);
    venderBoletos(*db, kCarrera, kGrupos);
    venderBoletos(*db, kCarreraPocos, 6);
    db->exec("ANALYZE TABLE ma_principal");
    std::printf("innodb_flush_log_at_trx_commit=%s\n", qPrintable(flushSetting(*db)));
    std::printf("%d tickets on race %d, 12 horses, %d groups in 2 centres\n", kBoletos, kCarrera, kGrupos);

    ResultadoProceso r;
    const double procesar = segundos([&] { r = procesarCarrera(*db, peticion(5, 5.2)); });
    std::printf("process:                      %.3f s  (%lld winning tickets, %d group settlements)\n", procesar,
                ganadoras(*db), int(r.grupos.size()));
    std::vector<double> otra;
    for (int i = 0; i < 3; ++i) otra.push_back(segundos([&] { procesarCarrera(*db, peticion(5, 5.2)); }));
    std::printf("process again, same result:   %.3f s  (median of 3)\n", percentile(otra, 50));
    const double corregir = segundos([&] { procesarCarrera(*db, peticion(8, 12.4)); });
    std::printf("re-process, corrected winner: %.3f s  (%lld winning tickets)\n", corregir, ganadoras(*db));
    long long devueltos = 0;
    const double anular = segundos([&] {
        devueltos = db->inTransaction([&] { return devolverBoletos(*db, kFecha, kCarrera, "TODOS", 0, 10); });
    });
    std::printf("void the race:                %.3f s  (%lld tickets refunded)\n", anular, devueltos);

    // Race 2: as many tickets, held by 6 groups; 54 groups have no winning ticket.
    const double pocos = segundos([&] { procesarCarrera(*db, peticion(5, 5.2, kCarreraPocos)); });
    std::vector<double> pocosOtra;
    for (int i = 0; i < 3; ++i)
        pocosOtra.push_back(segundos([&] { procesarCarrera(*db, peticion(5, 5.2, kCarreraPocos)); }));
    std::printf("race %d, the same tickets held by 6 of the 60 groups (54 without a winning ticket):\n", kCarreraPocos);
    std::printf("process:                      %.3f s  (%lld winning tickets)\n", pocos, ganadoras(*db, kCarreraPocos));
    std::printf("process again, same result:   %.3f s  (median of 3)\n", percentile(pocosOtra, 50));
    return 0;
}
