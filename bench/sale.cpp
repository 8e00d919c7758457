// The booth's winner-bet sale as the window runs it (checks, locks, insert,
// code, keys, ticket printed to a file port), without widgets:
//  1. one booth alone: median and p99 of a sale;
//  2. 32 booths, each with its own connection, selling the same race for
//     10 s while the administrator closes the race half-way through:
//     sales per second, p99, and the anomaly counts (duplicate codes, tickets
//     committed after the close, tickets whose keys fail the payment check,
//     horses sold past their quota), which must all be 0;
//  3. the same two runs for the fixed-table sale (its summary accepted):
//     duplicate codes, tickets after the close and quota overruns, all 0.
#include "BenchSupport.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "schema/Demo.h"
#include "sales/TicketKeys.h"
#include "sales/VentaGanadores.h"
#include "sales/VentaTablaFija.h"

#include <QApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <atomic>
#include <mutex>
#include <thread>

using namespace hipico;
using namespace hipico::bench;

namespace {

// Refusals are counted, not shown.
class Contador : public Dialogs {
public:
    void message(Icon, const QString&, const QString&) override { ++mensajes; }
    bool confirm(const QString&, const QString&, bool, Icon) override { return acepta; }
    std::optional<QString> ask(const QString&, const QString&, const QString&) override { return std::nullopt; }
    long mensajes = 0;
    bool acepta = false;  // the fixed-table summary is accepted
};

// The session a sign-in of this user and the main menu's load leave.
Session sesionDe(Context& ctx, const QString& usuario) {
    Db& db = ctx.servidor();
    Session s;
    cargarIdentidad(s, db.query("select * from usuarios where usuario=?", {usuario}).first());
    cargarGrupoUsuario(s, db.query("select * from grupos where grupo=?", {s.grupo}).first());
    cargarSubgrupo(s, db.query("select * from subgrupos where subgrupo=?", {s.subgrupo}).first());
    cargarConfiguracion(s, db.query("select * from configuracion").first());
    AbrirGrupos(ctx);
    cargarParametrosGrupo(s, ctx.rs("rsGrupos"));
    return s;
}

struct Cabina {
    Cabina(const Config& c, const Session& s, const QString& puerto) : ctx(c, dialogs, reloj), venta(ctx) {
        ctx.cnServidor = Db::open(cadenaServidor(c));
        ctx.session = s;
        ctx.session.confLocal.impresion = 1;
        ctx.session.confLocal.puerto = puerto;  // raw lines to a file port
    }
    Contador dialogs;
    SystemClock reloj;
    Context ctx;
    VentaGanadores venta;
};

struct CabinaTF {
    CabinaTF(const Config& c, const Session& s, const QString& puerto) : ctx(c, dialogs, reloj), venta(ctx) {
        dialogs.acepta = true;
        ctx.cnServidor = Db::open(cadenaServidor(c));
        ctx.session = s;
        ctx.session.confLocal.impresion = 1;
        ctx.session.confLocal.puerto = puerto;
    }
    Contador dialogs;
    SystemClock reloj;
    Context ctx;
    VentaTablaFija venta;
};

// The fixed-table sale: one booth, then 32 booths on race 1 with its pool
// closed half-way; horse 8 keeps a quota of 40 tables. True when no anomaly.
bool tablaFija(const Config& c, Context& base, const QString& carpeta) {
    Db& db0 = base.servidor();
    db0.exec("update carreras set venta_tf=1, bloqueotf=0, estado_tf=0, apuesta_max_tf=0 where carrera=1");
    db0.exec("update venta_cupo_tf set cab1=1e9,cab2=1e9,cab3=1e9,cab4=1e9,cab5=1e9,cab6=1e9,cab7=1e9,cab8=40 "
             "where ch='LOS PINOS'");
    db0.exec("update grupos set apuesta_max_tf=0, cupoviptf=0");
    const Session sesion = sesionDe(base, "tablafija");
    const QString fecha = sesion.fecha;
    {
        CabinaTF cabina(c, sesion, carpeta + "/tf.prn");
        std::vector<double> t;
        for (int k = 0; k < 1200; ++k) {
            const auto t0 = bench::Clock::now();
            const auto r = cabina.venta.procesarVenta("1", QString::number(1 + k % 7), QString::number(1 + k % 3));
            if (k >= 200) t.push_back(microsSince(t0));
            if (r.resultado != VentaTablaFija::Resultado::Vendido) {
                std::printf("venta de tabla fija rechazada en la prueba de una taquilla\n");
                return false;
            }
        }
        std::printf("fixed table, one booth: %zu sales (summary accepted, ticket printed to a file port), median "
                    "%.0f us, p99 %.0f us\n",
                    t.size(), percentile(t, 50), percentile(t, 99));
    }
    db0.exec("DELETE FROM tablafija");
    constexpr int kCabinas = 32;
    constexpr double kSegundos = 10.0;
    std::vector<std::unique_ptr<CabinaTF>> cabinas;
    for (int i = 0; i < kCabinas; ++i)
        cabinas.push_back(std::make_unique<CabinaTF>(c, sesion, carpeta + QString("/tf%1.prn").arg(i)));
    std::atomic<bool> fin{false}, cerrada{false};
    std::atomic<long> vendidasTrasCierre{0};
    std::vector<std::vector<double>> latencias(kCabinas);
    std::vector<long> ventas(kCabinas, 0);
    std::vector<std::thread> hilos;
    const auto inicio = bench::Clock::now();
    for (int i = 0; i < kCabinas; ++i)
        hilos.emplace_back([&, i] {
            QRandomGenerator azar(4321 + i);
            while (!fin) {
                const bool despues = cerrada;
                const auto t0 = bench::Clock::now();
                const auto r = cabinas[i]->venta.procesarVenta("1", QString::number(1 + azar.bounded(8)),
                                                               QString::number(1 + azar.bounded(3)));
                if (r.resultado == VentaTablaFija::Resultado::Vendido) {
                    latencias[i].push_back(microsSince(t0));
                    ++ventas[i];
                    if (despues) ++vendidasTrasCierre;
                }
            }
        });
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    auto admin = Db::open(cadenaServidor(c));
    admin->exec("update carreras set venta_tf='0',bloqueotf='1' Where carrera = ? and fecha = ? and id_hipodromo = ?",
                {1, fecha, 1});
    const long long ultimo = Row::toInteger(admin->scalar("SELECT coalesce(max(numero),0) FROM tablafija"));
    cerrada = true;
    const double abierta = microsSince(inicio) / 1e6;
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    fin = true;
    for (auto& h : hilos) h.join();
    std::vector<double> todas;
    long total = 0;
    for (int i = 0; i < kCabinas; ++i) {
        todas.insert(todas.end(), latencias[i].begin(), latencias[i].end());
        total += ventas[i];
    }
    const long long duplicados =
        Row::toInteger(admin->scalar("SELECT count(*) - count(distinct nu_boleto) FROM tablafija"));
    const long long trasCierre =
        Row::toInteger(admin->scalar("SELECT count(*) FROM tablafija WHERE numero > ?", {ultimo}));
    const long long excedidos = Row::toInteger(admin->scalar(
        "SELECT count(*) FROM (SELECT caballo, grupo, sum(tablas) AS vendido FROM tablafija GROUP BY caballo, grupo) "
        "v JOIN venta_cupo_tf q ON q.ch='LOS PINOS' WHERE v.vendido > CASE v.caballo WHEN 8 THEN q.cab8 ELSE 1e9 END"));
    const double cab8 = Row::toNumber(admin->scalar("SELECT coalesce(sum(tablas),0) FROM tablafija WHERE caballo=8"));
    std::printf("fixed table, 32 booths, race open %.1f s then closed: %ld sales (%.0f per second), median %.0f us, "
                "p99 %.0f us\n",
                abierta, total, total / abierta, percentile(todas, 50), percentile(todas, 99));
    std::printf("fixed table: duplicate codes %lld, tickets after the close %lld (reported after it: %ld), horses "
                "past their quota %lld (horse 8: %.0f of 40 tables)\n",
                duplicados, trasCierre, vendidasTrasCierre.load(), excedidos, cab8);
    return duplicados == 0 && trasCierre == 0 && vendidasTrasCierre == 0 && excedidos == 0;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const Config c = benchConfig("b_sale");
    freshCentral(c);
    QTemporaryDir puertos;
    {
        auto db = Db::open(cadenaServidor(c));
        cargarDemo(*db, QDate::currentDate());
        // Room for a long run; horse 8 keeps a small quota so that its last units are fought over.
        db->exec("update venta_cupo_ganadores set cab1=1e9,cab2=1e9,cab3=1e9,cab4=1e9,cab5=1e9,cab6=1e9,cab7=1e9,"
                 "cab8=400 where ch='LOS PINOS'");
        db->exec("update grupos set pedirclave=0, apuesta_max_win=0");
    }
    Contador d0;
    SystemClock r0;
    Context base(c, d0, r0);
    base.cnServidor = Db::open(cadenaServidor(c));
    const Session sesion = sesionDe(base, "taquilla1");
    const QString fecha = sesion.fecha;
    std::printf("innodb_flush_log_at_trx_commit=%s\n", qPrintable(flushSetting(base.servidor())));

    // 1. One booth.
    {
        Cabina cabina(c, sesion, puertos.filePath("una.prn"));
        for (int k = 0; k < 200; ++k) cabina.venta.procesarVenta("1", QString::number(1 + k % 7), "1");
        std::vector<double> t;
        for (int k = 0; k < 3000; ++k) {
            const auto t0 = bench::Clock::now();
            const auto r = cabina.venta.procesarVenta("1", QString::number(1 + k % 7), QString::number(1 + k % 3));
            t.push_back(microsSince(t0));
            if (r.resultado != VentaGanadores::Resultado::Vendido) {
                std::printf("venta rechazada en la prueba de una taquilla\n");
                return 1;
            }
        }
        std::printf("one booth: %zu sales (ticket printed to a file port), median %.0f us, p99 %.0f us\n", t.size(),
                    percentile(t, 50), percentile(t, 99));
    }
    base.servidor().exec("DELETE FROM ma_principal");

    // 2. Thirty-two booths on the same race; the race is closed half-way.
    constexpr int kCabinas = 32;
    constexpr double kSegundos = 10.0;
    std::vector<std::unique_ptr<Cabina>> cabinas;
    for (int i = 0; i < kCabinas; ++i)
        cabinas.push_back(std::make_unique<Cabina>(c, sesion, puertos.filePath(QString("c%1.prn").arg(i))));
    std::atomic<bool> fin{false};
    std::atomic<bool> cerrada{false};
    std::atomic<long> vendidasTrasCierre{0};
    std::vector<std::vector<double>> latencias(kCabinas);
    std::vector<long> ventas(kCabinas, 0), rechazos(kCabinas, 0);
    std::vector<std::thread> hilos;
    const auto inicio = bench::Clock::now();
    for (int i = 0; i < kCabinas; ++i) {
        hilos.emplace_back([&, i] {
            QRandomGenerator azar(1234 + i);
            Cabina& cab = *cabinas[i];
            while (!fin) {
                const bool despues = cerrada;
                const QString caballo = QString::number(1 + azar.bounded(8));
                const QString monto = QString::number(1 + azar.bounded(5));
                const auto t0 = bench::Clock::now();
                const auto r = cab.venta.procesarVenta("1", caballo, monto);
                const double us = microsSince(t0);
                if (r.resultado == VentaGanadores::Resultado::Vendido) {
                    latencias[i].push_back(us);
                    ++ventas[i];
                    if (despues) ++vendidasTrasCierre;
                } else {
                    ++rechazos[i];
                }
            }
        });
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    auto admin = Db::open(cadenaServidor(c));
    const auto antesCierre = bench::Clock::now();
    admin->exec("update carreras set estado_puestos='0',venta='0' Where carrera = ? and fecha = ? and id_hipodromo = ? ",
                {1, fecha, 1});
    const double esperaCierre = microsSince(antesCierre);
    const long long ultimo = Row::toInteger(admin->scalar("SELECT coalesce(max(numero),0) FROM ma_principal"));
    cerrada = true;
    const double abierta = microsSince(inicio) / 1e6;
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    fin = true;
    for (auto& h : hilos) h.join();

    std::vector<double> todas;
    long totalVentas = 0, totalRechazos = 0;
    for (int i = 0; i < kCabinas; ++i) {
        todas.insert(todas.end(), latencias[i].begin(), latencias[i].end());
        totalVentas += ventas[i];
        totalRechazos += rechazos[i];
    }
    Db& db = *admin;
    const long long duplicados =
        Row::toInteger(db.scalar("SELECT count(*) - count(distinct nu_boleto) FROM ma_principal"));
    const long long trasCierre = Row::toInteger(db.scalar("SELECT count(*) FROM ma_principal WHERE numero > ?", {ultimo}));
    long long llavesMalas = 0;
    const Recordset boletos = db.query("SELECT * FROM ma_principal");
    for (const Row& b : boletos)
        if (verificarBoleto(b, std::nullopt) != Alteracion::Ninguna) ++llavesMalas;
    const Row cupos = db.query("SELECT * FROM venta_cupo_ganadores WHERE ch='LOS PINOS'").first();
    long long excedidos = 0;
    for (const Row& v : db.query("SELECT caballo, sum(ganadores) AS vendido FROM ma_principal GROUP BY caballo"))
        if (v.number("vendido") > cupos.number(QString("cab%1").arg(v.integer("caballo"))) + 1e-9) ++excedidos;
    const double cab8 = Row::toNumber(db.scalar("SELECT sum(ganadores) FROM ma_principal WHERE caballo=8"));

    std::printf("32 booths, race open %.1f s then closed: %ld sales (%.0f per second), median %.0f us, p99 %.0f us; "
                "%ld refusals (quota of horse 8, then the closed race)\n",
                abierta, totalVentas, totalVentas / abierta, percentile(todas, 50), percentile(todas, 99),
                totalRechazos);
    std::printf("close statement waited %.0f us for the sales in flight\n", esperaCierre);
    std::printf("duplicate ticket codes: %lld\n", duplicados);
    std::printf("tickets committed after the close: %lld (sales reported after it: %ld)\n", trasCierre,
                vendidasTrasCierre.load());
    std::printf("tickets whose keys fail the payment check: %lld of %d\n", llavesMalas, boletos.size());
    std::printf("horses sold past their quota: %lld (horse 8: %.0f of 400 units)\n", excedidos, cab8);
    const bool ok = duplicados == 0 && trasCierre == 0 && vendidasTrasCierre == 0 && llavesMalas == 0 &&
                    excedidos == 0 && tablaFija(c, base, puertos.path());
    std::printf("%s\n", ok ? "anomalies: none" : "ANOMALIES FOUND");
    return ok ? 0 : 1;
}
