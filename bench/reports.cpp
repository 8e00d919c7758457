// Reports over a big day: 1,000,000 winner tickets (and 100,000 fixed-table
// ones) over 60 groups in 2 centres, plus 8 weeks of daily totals per group
// and game. For every report window: the time to refill its table and to lay
// out and draw the first page of its preview. Then a list of 100,000 tickets:
// refilled, laid out and written as a PDF.
#include "BenchSupport.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "core/Formato.h"
#include "reportes/Exportar.h"
#include "reportes/Llenados.h"
#include "reportes/Reporte.h"
#include "reportes/VentanasReporte.h"
#include "schema/LocalSchema.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

using namespace hipico;
using namespace hipico::bench;

namespace {

void prepararDia(Db& db) {
    diaGrande(db, 1000000, 100000);
    // Eight weeks of daily totals before the day, every group and game.
    for (const char* tabla : {"ventas_ganadores_general", "ventas_tf_general", "ventas_mc_general"})
        db.exec(std::string("INSERT INTO ") + tabla +
                    " (grupo, fecha, venta, premios, monto_porpagar, saldo) SELECT g.grupo, "
                    "DATE_FORMAT(? - INTERVAL s.seq DAY, '%Y-%m-%d'), 1000 + s.seq, 400, 50, 550 + s.seq "
                    "FROM grupos g, seq_1_to_56 s",
                {kDiaGrande});
    for (const char* juego : {"PUESTOS", "DINAMICAS"})
        db.exec("INSERT INTO ventas_generales (grupo, fecha, venta, premios, monto_porpagar, saldo, juego) SELECT g.grupo, "
                "DATE_FORMAT(? - INTERVAL s.seq DAY, '%Y-%m-%d'), 300, 100, 0, 200, ? FROM grupos g, seq_1_to_56 s",
                {kDiaGrande, juego});
    db.exec("INSERT INTO bitacora (numero, carrera, caballo, ganadores, taquilla, grupo, hora, fecha, nu_boleto, motivo, "
            "usuario, estatus) SELECT seq, 1 + seq % 8, 1, 2, 'CENTRO NORTE', CONCAT('G', LPAD(1 + seq % 60, 2, '0')), "
            "'10:00:00', DATE_FORMAT(? - INTERVAL seq % 7 DAY, '%Y-%m-%d'), CONCAT('1', seq), 'ANULADO', 'admin', 5 "
            "FROM seq_1_to_5000",
            {kDiaGrande});
    db.exec("ANALYZE TABLE bitacora");
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const Config c = benchConfig("b_reports");
    freshCentral(c);
    {
        auto servidor = Db::open(cadenaLocalSinBase(c));
        servidor->exec(("DROP DATABASE IF EXISTS `" + c.localBase + "`").toStdString());
    }
    CrearBDLocal(c);
    ScriptedDialogs dialogs;
    FixedClock reloj(QDateTime(QDate(2026, 11, 23), QTime(18, 0)));
    Context ctx(c, dialogs, reloj);
    ctx.cnServidor = Db::open(cadenaServidor(c));
    ctx.cnLocal = Db::open(cadenaLocal(c));
    Db& db = *ctx.cnServidor;
    prepararDia(db);
    Session& s = ctx.session;
    s.usuario = QStringLiteral("admin");
    s.nivel = QStringLiteral("Administrador");
    s.fecha = kDiaGrande;
    s.empresa = QStringLiteral("RED DE CENTROS HIPICOS");
    std::printf("innodb_flush_log_at_trx_commit=%s\n", qPrintable(flushSetting(db)));
    std::printf("1,000,000 winner and 100,000 fixed-table tickets, %d groups in 2 centres, 8 weeks of daily totals\n",
                kGruposDiaGrande);
    std::printf("%-30s %8s %8s %8s %7s\n", "window (request)", "fill", "page 1", "total", "rows");

    const QDate hoy = desdeFechaSql(kDiaGrande);
    for (const DescripcionReporte& d : ventanasReporte()) {
        // A one-day window on the big day; a range window over the week that ends on it.
        Peticion p{d.rango ? hoy.addDays(-6) : hoy, hoy, d.carreras ? "1" : "", d.carreras ? "8" : "", Alcance::todos(), false};
        GeneradorReporte g(ctx, d);
        std::optional<GeneradorReporte::Apertura> a;
        const double llenar = segundos([&] { a = g.generar(p); });
        double pagina = 0;
        if (a) {
            pagina = segundos([&] {
                const Documento doc = prepararReporte(ctx, *solicitudGeneral(a->tipo, a->parametros.value_or(ParametrosReporte{})));
                imagenPagina(doc, 0, 96);
            });
        }
        std::printf("%-30s %7.3fs %7.3fs %7.3fs %7lld%s\n", qPrintable(d.nombre), llenar, pagina, llenar + pagina,
                    a ? a->filas : 0LL, llenar + pagina < 1.0 ? "" : "  (over 1 s)");
    }

    // A list of 100,000 tickets through the ticket window's template.
    Recordset boletos;
    const double leer = segundos([&] {
        boletos = db.query("SELECT numero,nu_boleto,carrera,caballo,ganadores,cobrado,estatus,ch,grupo FROM ma_principal "
                           "WHERE fecha = ? ORDER BY numero DESC LIMIT 100000",
                           {kDiaGrande});
    });
    const double llenar = segundos([&] { reescribir(*ctx.cnLocal, "rpt_jugadas", filasJugadas(boletos, kDiaGrande, 10)); });
    std::optional<Documento> doc;
    const double maquetar = segundos([&] { doc = prepararReporte(ctx, *solicitudBoletos(1, {"TODAS", 1})); });
    QTemporaryDir carpeta;
    const QString pdf = carpeta.filePath("boletos.pdf");
    const double escribir = segundos([&] { exportarPdf(*doc, pdf); });
    std::printf("ticket list, 100,000 rows: read %.2f s, fill %.2f s, lay out %.2f s, PDF %.2f s (%d pages, %.1f MB): "
                "%.2f s in all\n",
                leer, llenar, maquetar, escribir, doc->paginas(), QFileInfo(pdf).size() / 1e6,
                leer + llenar + maquetar + escribir);
    return 0;
}
