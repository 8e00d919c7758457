// The booth's winner-bet sale as the window runs it (checks, locks, insert,
// code, keys, ticket printed to a file port), without widgets:
//  1. one booth alone: median and p99 of a sale, beside the floor (insert,
//     id, update) in the same run, and again after 100,000 tickets on the
//     same horse, and the money journal's part of a sale (`--one-booth`:
//     this part alone);
//  2. 32 booths, each with its own connection (on a cluster, spread over its
//     nodes: HIPICO_DB_PORTS), selling the same race for
//     10 s while the administrator closes the race half-way through:
//     sales per second, p99, and the anomaly counts (duplicate codes, tickets
//     committed after the close, tickets whose keys fail the payment check,
//     horses sold past their quota), which must all be 0;
//  3. the Macuare sale: one booth alone (median, p99), then 32 booths of one
//     group selling twenty combinations whose quota runs out, the Macuare
//     closed half-way: duplicate codes, combinations sold past their quota,
//     register rows that disagree with their tickets and tickets after the
//     close, which must all be 0.
//  4. the same two runs for the fixed-table sale (its summary accepted):
//     duplicate codes, tickets after the close and quota overruns, all 0.
#include "BenchSupport.h"

#include "core/Context.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "schema/Demo.h"
#include "sales/TicketKeys.h"
#include "sales/VentaGanadores.h"
#include "sales/VentaMacuare.h"
#include "admin/EscritorioTablaFija.h"
#include "admin/ProcesoMacuare.h"
#include "races/AbrirCerrarLogica.h"
#include "sales/VentaTablaFija.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
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

// On a cluster (HIPICO_DB_PORTS: the nodes' ports) booth i works on node i
// modulo their number, the other nodes as its alternates.
QList<int> nodos() {
    QList<int> out;
    for (const QString& p : qEnvironmentVariable("HIPICO_DB_PORTS").split(',', Qt::SkipEmptyParts)) out << p.toInt();
    return out;
}

std::shared_ptr<Db> conexionDeCabina(Config c, int i) {
    const QList<int> puertos = nodos();
    if (puertos.isEmpty()) return Db::open(cadenaServidor(c));
    QStringList otros;
    for (int k = 0; k < puertos.size(); ++k) {
        c.servidor.puerto = puertos.at((i + k) % puertos.size());
        if (k > 0) otros << cadenaServidor(c);
    }
    c.servidor.puerto = puertos.at(i % puertos.size());
    return Db::open(cadenaServidor(c), otros);
}

// A booth of its own: its own connection (booth i on node i of a cluster),
// its own journal chain, the session, tickets printed as raw lines to a file
// port; the sale logic of the game it sells.
template <class Venta>
struct CabinaDe {
    CabinaDe(const Config& c, const Session& s, const QString& puerto, int i = 0)
        : ctx(c, dialogs, reloj), venta(ctx) {
        ctx.cnServidor = conexionDeCabina(c, i);
        ctx.cnServidor->firmarMaquina(QFileInfo(puerto).baseName());
        ctx.session = s;
        ctx.session.confLocal.impresion = 1;
        ctx.session.confLocal.puerto = puerto;  // raw lines to a file port
    }
    Contador dialogs;
    SystemClock reloj;
    Context ctx;
    Venta venta;
};
using Cabina = CabinaDe<VentaGanadores>;
using CabinaMC = CabinaDe<VentaMacuare>;

constexpr int kCabinas = 32;
constexpr double kSegundos = 10.0;

// The administrator who closes a pool half-way, through the program's own
// close, on a connection of its own.
struct Administrador {
    explicit Administrador(const Config& c) : ctx(c, dialogs, reloj) { ctx.cnServidor = Db::open(cadenaServidor(c)); }
    Contador dialogs;
    SystemClock reloj;
    Context ctx;
};

// What booths selling at once for kSegundos made, the pool closed half-way.
struct Tanda {
    double abierta = 0;       // seconds until the close
    double esperaCierre = 0;  // microseconds the close waited
    long long ultimo = 0;     // the last ticket number when the close returned
    long ventas = 0, rechazos = 0, vendidasTrasCierre = 0;
    std::vector<double> latencias;
};

// Each booth sells with `vender(booth, random)` (true: sold) until the time
// is up; half-way `cerrar` closes the pool and gives the last ticket number.
Tanda correrTanda(const std::function<bool(int, QRandomGenerator&)>& vender, const std::function<long long()>& cerrar,
                  unsigned semilla) {
    std::atomic<bool> fin{false}, cerrada{false};
    std::atomic<long> trasCierre{0};
    std::vector<std::vector<double>> latencias(kCabinas);
    std::vector<long> ventas(kCabinas, 0), rechazos(kCabinas, 0);
    std::vector<std::thread> hilos;
    const auto inicio = bench::Clock::now();
    for (int i = 0; i < kCabinas; ++i)
        hilos.emplace_back([&, i] {
            QRandomGenerator azar(semilla + i);
            while (!fin) {
                const bool despues = cerrada;
                const auto t0 = bench::Clock::now();
                const bool vendida = vender(i, azar);
                const double us = microsSince(t0);
                if (!vendida) {
                    ++rechazos[i];
                    continue;
                }
                latencias[i].push_back(us);
                ++ventas[i];
                if (despues) ++trasCierre;
            }
        });
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    Tanda t;
    const auto antesCierre = bench::Clock::now();
    t.ultimo = cerrar();
    t.esperaCierre = microsSince(antesCierre);
    cerrada = true;
    t.abierta = microsSince(inicio) / 1e6;
    std::this_thread::sleep_for(std::chrono::duration<double>(kSegundos / 2));
    fin = true;
    for (auto& h : hilos) h.join();
    for (int i = 0; i < kCabinas; ++i) {
        t.latencias.insert(t.latencias.end(), latencias[i].begin(), latencias[i].end());
        t.ventas += ventas[i];
        t.rechazos += rechazos[i];
    }
    t.vendidasTrasCierre = trasCierre;
    return t;
}

PedidoMacuare jugadaMC(QRandomGenerator& azar, int combinaciones) {
    // One of `combinaciones` (at most 36^2) combinations: horses 1 to 6 of each leg, the first two legs
    // telling them apart.
    const int k = int(azar.bounded(combinaciones));
    PedidoMacuare p;
    p.piernas << QString::number(1 + k % 6) << QString::number(1 + (k / 6) % 6);
    for (int i = 2; i < 7; ++i) p.piernas << QString::number(1 + (k / 36 + i) % 6);
    p.monto = QString::number(1 + azar.bounded(5));
    p.veces = QString::number(1 + azar.bounded(2));
    p.nombre = QStringLiteral("CLIENTE");
    return p;
}

bool ventaMacuare(const Config& c, Context& base, QTemporaryDir& puertos) {
    Db& db = base.servidor();
    cargarDemoMacuare(db, QDate::currentDate());
    db.exec("DELETE FROM macuares");
    db.exec("DELETE FROM combinaciones_general");
    db.exec("UPDATE grupos SET apuesta_max_mc = 0, cupo_mc = 0, veces_mc = 10");
    const Session sesion = sesionDe(base, "taquilla2");
    const QString fecha = sesion.fecha;
    {
        CabinaMC cabina(c, sesion, puertos.filePath("mc.prn"));
        QRandomGenerator azar(99);
        std::vector<double> t;
        for (int k = 0; k < 3200; ++k) {
            const auto t0 = bench::Clock::now();
            const auto r = cabina.venta.vender(jugadaMC(azar, 5000));
            if (k >= 200) t.push_back(microsSince(t0));
            if (!r.vendido) {
                std::printf("venta de macuare rechazada en la prueba de una taquilla\n");
                return false;
            }
        }
        std::printf("Macuare, one booth: %zu sales (ticket printed to a file port), median %.0f us, p99 %.0f us\n",
                    t.size(), percentile(t, 50), percentile(t, 99));
    }
    db.exec("DELETE FROM macuares");
    db.exec("DELETE FROM combinaciones_general");
    constexpr double kCupo = 600;
    db.exec("UPDATE grupos SET cupo_mc = ?", {kCupo});

    std::vector<std::unique_ptr<CabinaMC>> cabinas;
    for (int i = 0; i < kCabinas; ++i)
        cabinas.push_back(std::make_unique<CabinaMC>(c, sesion, puertos.filePath(QString("mc%1.prn").arg(i)), i));
    Administrador administrador(c);
    Context& admin = administrador.ctx;
    const Tanda t = correrTanda(
        [&](int i, QRandomGenerator& azar) { return cabinas[i]->venta.vender(jugadaMC(azar, 20)).vendido; },
        [&] {
            ProcesoMacuare(admin).abrir(fecha, false);
            return Row::toInteger(admin.servidor().scalar("SELECT coalesce(max(numero),0) FROM macuares"));
        },
        777);
    Db& a = admin.servidor();
    const long long duplicados = Row::toInteger(a.scalar("SELECT count(*) - count(distinct boleto) FROM macuares"));
    const long long trasCierre = Row::toInteger(a.scalar("SELECT count(*) FROM macuares WHERE numero > ?", {t.ultimo}));
    const long long excedidas = Row::toInteger(
        a.scalar("SELECT count(*) FROM (SELECT combinacion, grupo FROM macuares GROUP BY combinacion, grupo HAVING "
                 "sum(monto * veces) > ? + 0.001) x",
                 {kCupo}));
    const long long llenas = Row::toInteger(
        a.scalar("SELECT count(*) FROM (SELECT combinacion FROM macuares GROUP BY combinacion HAVING "
                 "sum(monto * veces) > ? - 10) x",
                 {kCupo}));
    const long long registro = Row::toInteger(
        a.scalar("SELECT count(*) FROM combinaciones_general c LEFT JOIN (SELECT combinacion, fecha, sum(monto * veces) "
                 "AS v FROM macuares GROUP BY combinacion, fecha) t ON t.combinacion = c.combinacion AND t.fecha = "
                 "c.fecha WHERE abs(c.monto - COALESCE(t.v, 0)) > 0.001"));
    std::printf("Macuare, 32 booths of one group on 20 combinations (quota %.0f each), open %.1f s then closed: %ld "
                "sales (%.0f per second), median %.0f us, p99 %.0f us; %ld refusals (%lld combinations filled, then "
                "the close)\n",
                kCupo, t.abierta, t.ventas, t.ventas / t.abierta, percentile(t.latencias, 50), percentile(t.latencias, 99),
                t.rechazos, llenas);
    std::printf("Macuare close waited %.0f us for the sales in flight\n", t.esperaCierre);
    std::printf("Macuare duplicate ticket codes: %lld\n", duplicados);
    std::printf("Macuare combinations sold past their quota: %lld\n", excedidas);
    std::printf("Macuare register rows that disagree with their tickets: %lld\n", registro);
    std::printf("Macuare tickets committed after the close: %lld (sales reported after it: %ld)\n", trasCierre,
                t.vendidasTrasCierre);
    const bool ok = duplicados == 0 && excedidas == 0 && registro == 0 && trasCierre == 0 && t.vendidasTrasCierre == 0;
    std::printf("%s\n", ok ? "Macuare anomalies: none" : "MACUARE ANOMALIES FOUND");
    return ok;
}

using CabinaTF = CabinaDe<VentaTablaFija>;

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
        cabina.dialogs.acepta = true;
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
    std::vector<std::unique_ptr<CabinaTF>> cabinas;
    for (int i = 0; i < kCabinas; ++i) {
        cabinas.push_back(std::make_unique<CabinaTF>(c, sesion, carpeta + QString("/tf%1.prn").arg(i), i));
        cabinas.back()->dialogs.acepta = true;
    }
    auto admin = Db::open(cadenaServidor(c));
    // The closing administrator, signed on before the booths start.
    Administrador cierre(c);
    const Tanda t = correrTanda(
        [&](int i, QRandomGenerator& azar) {
            return cabinas[i]->venta.procesarVenta("1", QString::number(1 + azar.bounded(8)),
                                                   QString::number(1 + azar.bounded(3)))
                       .resultado == VentaTablaFija::Resultado::Vendido;
        },
        [&] {
            // The fixed-table desk's close (it also blocks the race).
            Seleccion s;
            s.fecha = fecha;
            s.hipodromo = QStringLiteral("LA RINCONADA");
            s.carrera = 1;
            if (!EscritorioTablaFija(cierre.ctx).abrir(s, false)) std::printf("el cierre de la tabla fija fallo\n");
            return Row::toInteger(admin->scalar("SELECT coalesce(max(numero),0) FROM tablafija"));
        },
        4321);
    const long long duplicados =
        Row::toInteger(admin->scalar("SELECT count(*) - count(distinct nu_boleto) FROM tablafija"));
    const long long trasCierre =
        Row::toInteger(admin->scalar("SELECT count(*) FROM tablafija WHERE numero > ?", {t.ultimo}));
    const long long excedidos = Row::toInteger(admin->scalar(
        "SELECT count(*) FROM (SELECT caballo, grupo, sum(tablas) AS vendido FROM tablafija GROUP BY caballo, grupo) "
        "v JOIN venta_cupo_tf q ON q.ch='LOS PINOS' WHERE v.vendido > CASE v.caballo WHEN 8 THEN q.cab8 ELSE 1e9 END"));
    const double cab8 = Row::toNumber(admin->scalar("SELECT coalesce(sum(tablas),0) FROM tablafija WHERE caballo=8"));
    std::printf("fixed table, 32 booths, race open %.1f s then closed: %ld sales (%.0f per second), median %.0f us, "
                "p99 %.0f us\n",
                t.abierta, t.ventas, t.ventas / t.abierta, percentile(t.latencias, 50), percentile(t.latencias, 99));
    std::printf("fixed table: duplicate codes %lld, tickets after the close %lld (reported after it: %ld), horses "
                "past their quota %lld (horse 8: %.0f of 40 tables)\n",
                duplicados, trasCierre, t.vendidasTrasCierre, excedidos, cab8);
    return duplicados == 0 && trasCierre == 0 && t.vendidasTrasCierre == 0 && excedidos == 0;
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
    std::printf("innodb_flush_log_at_trx_commit=%s%s\n", qPrintable(flushSetting(base.servidor())),
                nodos().isEmpty() ? "" : qPrintable(QString(", cluster of %1 nodes").arg(nodos().size())));

    // 1. One booth, beside the floor under it (insert, id, update) measured on
    //    the same server in the same run; then the same sale once the horse
    //    already has 100,000 tickets.
    {
        const Figures suelo = timed(200, 3000, [&](int k) { ticketFloor(base.servidor(), k); });
        base.servidor().exec("DELETE FROM ma_principal");
        Cabina cabina(c, sesion, puertos.filePath("una.prn"));
        bool rechazada = false;
        const auto vender = [&](const QString& caballo, int k) {
            const auto r = cabina.venta.procesarVenta("1", caballo, QString::number(1 + k % 3));
            rechazada = rechazada || r.resultado != VentaGanadores::Resultado::Vendido;
        };
        const Figures venta = timed(200, 3000, [&](int k) { vender(QString::number(1 + k % 7), k); });
        std::printf("floor (insert + id + update): median %.0f us, p99 %.0f us\n", suelo.median, suelo.p99);
        std::printf("one booth: 3000 sales (ticket printed to a file port), median %.0f us (%.1f x floor), "
                    "p99 %.0f us (%.1f x floor)\n",
                    venta.median, venta.median / suelo.median, venta.p99, venta.p99 / suelo.p99);
        // What the money journal adds to each sale: its row's append alone,
        // timed inside an open transaction as the sale makes it (on a day of
        // its own, so the day sold keeps its journal).
        std::vector<double> diario;
        Db& d = base.servidor();
        for (int k = 0; k < 3200; ++k)
            d.inTransaction([&] {
                const auto t0 = bench::Clock::now();
                anotar(d, {operacion::Venta, QStringLiteral("ma_principal"), QStringLiteral("1%1").arg(k), sesion.grupo,
                           QStringLiteral("2000-01-01"), 1, 1, 2});
                if (k >= 200) diario.push_back(microsSince(t0));
            });
        std::printf("money journal, its row in each sale: median %.0f us (%.0f%% of the sale's median), p99 %.0f us\n",
                    percentile(diario, 50), 100 * percentile(diario, 50) / venta.median, percentile(diario, 99));
        base.servidor().exec(
            "INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, hora, fecha, nu_boleto, subgrupo) "
            "SELECT 1, 1, 1, ?, ?, '10:00:00', ?, CONCAT('9', seq), ? FROM seq_1_to_100000",
            {sesion.ch, sesion.grupo, fecha, sesion.subgrupo});
        const Figures lleno = timed(50, 1000, [&](int k) { vender(QStringLiteral("1"), k); });
        std::printf("one booth, horse 1 after 100,000 tickets: median %.0f us, p99 %.0f us\n", lleno.median, lleno.p99);
        if (rechazada) {
            std::printf("venta rechazada en la prueba de una taquilla\n");
            return 1;
        }
    }
    // `bench_sale --one-booth`: the one booth's figures alone.
    if (app.arguments().contains(QStringLiteral("--one-booth"))) return 0;
    base.servidor().exec("DELETE FROM ma_principal");

    // 2. Thirty-two booths on the same race; the race is closed half-way.
    std::vector<std::unique_ptr<Cabina>> cabinas;
    for (int i = 0; i < kCabinas; ++i)
        cabinas.push_back(std::make_unique<Cabina>(c, sesion, puertos.filePath(QString("c%1.prn").arg(i)), i));
    auto admin = Db::open(cadenaServidor(c));
    // The closing administrator, signed on before the booths start, its track chosen.
    Administrador administrador(c);
    AbrirCerrarLogica cierre(administrador.ctx);
    if (!cierre.elegirHipodromo(QStringLiteral("LA RINCONADA"))) return 1;
    // HIPICO_BENCH_REPARTO=1: each node's booths sell their own horses (a
    // centre's booths on its node, centres on different horses), so no two
    // nodes write one horse's rows; otherwise any booth sells any horse.
    const bool reparto = qEnvironmentVariableIntValue("HIPICO_BENCH_REPARTO") == 1;
    const int n = std::max<int>(1, nodos().size());
    if (reparto) std::printf("each node's booths on their own horses (horse %% %d = booth %% %d)\n", n, n);
    const Tanda t = correrTanda(
        [&](int i, QRandomGenerator& azar) {
            int h = 1 + azar.bounded(8);
            if (reparto) h = 1 + i % n + n * azar.bounded((8 - i % n + n - 1) / n);
            const QString caballo = QString::number(h);
            const QString monto = QString::number(1 + azar.bounded(5));
            return cabinas[i]->venta.procesarVenta("1", caballo, monto).resultado == VentaGanadores::Resultado::Vendido;
        },
        [&] {
            // The pools window's close of the race's winner bets.
            if (!cierre.cerrar(1, {true, false, false, false})) std::printf("el cierre de la carrera fallo\n");
            return Row::toInteger(admin->scalar("SELECT coalesce(max(numero),0) FROM ma_principal"));
        },
        1234);
    Db& db = *admin;
    const long long duplicados =
        Row::toInteger(db.scalar("SELECT count(*) - count(distinct nu_boleto) FROM ma_principal"));
    const long long trasCierre = Row::toInteger(db.scalar("SELECT count(*) FROM ma_principal WHERE numero > ?", {t.ultimo}));
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
                t.abierta, t.ventas, t.ventas / t.abierta, percentile(t.latencias, 50), percentile(t.latencias, 99),
                t.rechazos);
    std::printf("close statement waited %.0f us for the sales in flight\n", t.esperaCierre);
    std::printf("duplicate ticket codes: %lld\n", duplicados);
    std::printf("tickets committed after the close: %lld (sales reported after it: %ld)\n", trasCierre,
                t.vendidasTrasCierre);
    std::printf("tickets whose keys fail the payment check: %lld of %d\n", llavesMalas, boletos.size());
    std::printf("horses sold past their quota: %lld (horse 8: %.0f of 400 units)\n", excedidos, cab8);
    const bool ok = duplicados == 0 && trasCierre == 0 && t.vendidasTrasCierre == 0 && llavesMalas == 0 &&
                    excedidos == 0 && tablaFija(c, base, puertos.path());
    std::printf("%s\n", ok ? "anomalies: none" : "ANOMALIES FOUND");
    const bool okMacuare = ventaMacuare(c, base, puertos);
    return ok && okMacuare ? 0 : 1;
}
