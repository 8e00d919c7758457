// Processing one race of a big day: 60 groups in 2 centres, 1,000,000 tickets
// on the race spread over 12 horses. Times the processing, a re-processing
// with a corrected winner and the void of the whole race; then the processing
// of a second race with as many tickets held by only 6 groups (54 groups
// without any winning ticket), which should cost about the same. Last, the
// Macuare of the day: 500,000 tickets over the 60 groups, settled when the
// seventh leg's winner is entered, then settled again after a corrected leg.
#include "BenchSupport.h"
#include "admin/ProcesoCarrera.h"
#include "admin/ProcesoMacuare.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "core/Clock.h"

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

constexpr int kMacuares = 500000;

// The Macuare of the day: races 1 to 7 (twelve horses each), and 500,000
// tickets whose picks go over horses 1 to 3 of each leg (2,187 combinations).
void venderMacuares(Db& db) {
    for (int carrera = 3; carrera <= 7; ++carrera)
        for (int n = 1; n <= 12; ++n)
            db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, venta, favorito) "
                    "VALUES (?, ?, 1, ?, ?, 0, ?)",
                    {kFecha, carrera, QString("CABALLO %1").arg(n), n, n == 3 ? 1 : 0});
    db.exec("INSERT INTO macuare_dias (fecha, id_hipodromo, carrera1, porcentaje_casa) VALUES (?, 1, 1, 20)", {kFecha});
    db.exec("INSERT INTO macuares (boleto, fecha, hora, monto, veces, v1, v2, v3, v4, v5, v6, v7, nombre, grupo, "
            "subgrupo, taquilla, combinacion) SELECT CONCAT('5', seq), ?, '10:00:00', 1 + seq % 10, 1 + seq % 3, "
            "1 + seq % 3, 1 + (seq DIV 3) % 3, 1 + (seq DIV 9) % 3, 1 + (seq DIV 27) % 3, 1 + (seq DIV 81) % 3, "
            "1 + (seq DIV 243) % 3, 1 + (seq DIV 729) % 3, 'CLIENTE', CONCAT('G', LPAD(1 + seq % 60, 2, '0')), 'S1', "
            "IF(seq % 60 < 30, 'CENTRO NORTE', 'CENTRO SUR'), '' FROM seq_1_to_500000",
            {kFecha});
    db.exec("UPDATE macuares SET combinacion = CONCAT_WS('-', v1, v2, v3, v4, v5, v6, v7)");
    db.exec("ANALYZE TABLE macuares");
}

// Nobody to answer: the bench checks the results itself.
class SinDialogos : public Dialogs {
public:
    void message(Icon, const QString&, const QString& texto) override {
        std::printf("mensaje: %s\n", qPrintable(texto));
    }
    bool confirm(const QString&, const QString&, bool, Icon) override { return true; }
    std::optional<QString> ask(const QString&, const QString&, const QString&) override { return std::nullopt; }
};

void settleMacuare(const Config& c) {
    {
        auto db = Db::open(cadenaServidor(c));
        venderMacuares(*db);
    }
    SinDialogos dialogos;
    SystemClock reloj;
    Context ctx(c, dialogos, reloj);
    ctx.cnServidor = Db::open(cadenaServidor(c));
    ProcesoMacuare proceso(ctx);
    std::printf("Macuare: %d tickets over %d groups, 2,187 combinations\n", kMacuares, kGrupos);
    const double seis = segundos([&] {
        for (int i = 0; i < 6; ++i) proceso.fijarGanadores(kFecha, i, {1 + i % 3});
    });
    std::printf("legs 1 to 6 entered:          %.3f s  (alive after them: %lld tickets)\n", seis,
                [&] {
                    long long n = 0;
                    for (const VivosGrupo& v : proceso.vivos(kFecha)) n += v.boletos;
                    return n;
                }());
    std::optional<Liquidacion> l;
    const double septima = segundos([&] { l = proceso.fijarGanadores(kFecha, 6, {1}); });
    std::printf("settle after the seventh leg: %.3f s  (%lld winning tickets, pool %.2f, shared %.2f)\n", septima,
                l ? l->ganadores : -1LL, l ? l->pozo : 0.0, l ? l->repartido : 0.0);
    const double corregida = segundos([&] { l = proceso.fijarGanadores(kFecha, 6, {2, 3}); });
    std::printf("settle again, dead heat in leg 7: %.3f s  (%lld winning tickets, shared %.2f)\n", corregida,
                l ? l->ganadores : -1LL, l ? l->repartido : 0.0);
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
    settleMacuare(c);
    return 0;
}
