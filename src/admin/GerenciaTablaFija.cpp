#include "admin/GerenciaTablaFija.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Textos.h"
#include "reportes/Llenados.h"

namespace hipico {

namespace {

const QString kVentana = QStringLiteral("Form_GerenciaTF");

}  // namespace

const QString GerenciaTablaFija::kPagados = QStringLiteral("(estatus=2 or estatus=4)");
const QString GerenciaTablaFija::kPorPagar = QStringLiteral("(estatus=1 or estatus=3 or estatus=6)");

const QStringList& GerenciaTablaFija::clases() {
    static const QStringList c{QStringLiteral("TODAS"), QStringLiteral("COBRADOS"), QStringLiteral("POR PAGAR"),
                               QStringLiteral("RET. POR PAGAR"), QStringLiteral("RET. PAGADO")};
    return c;
}

QVector<GerenciaTablaFija::Caballo> GerenciaTablaFija::ventas(const QString& fecha, long long carrera,
                                                              const QString& centro) {
    QVector<Caballo> out;
    proteger(ctx_, kVentana, [&] {
        Db& db = ctx_.servidor();
        std::string sql = "SELECT caballo,sum(monto) as venta,sum(tablas) as tablasf FROM tablafija where carrera =? "
                          "and fecha = ? and grupo = ?";
        Params p{carrera, fecha, ctx_.session.grupo};
        if (!centro.isEmpty()) {
            sql += " and ch=?";
            p.push_back(centro);
        }
        const Recordset vendidos = db.query(sql + " group by caballo", p);
        for (const Row& r : db.query("SELECT DISTINCT caballo,nu_caballo,retirado_tf FROM carreras  where carrera =? "
                                     "and fecha  = ? and id_hipodromo = (SELECT id_hipodromo FROM configuracion) "
                                     "order by nu_caballo",
                                     {carrera, fecha})) {
            Caballo c{r.integer("nu_caballo"),
                      r.integer("retirado_tf") ? QStringLiteral(" R  E  T  I  R  A  D  O ") : r.text("caballo")};
            for (const Row& v : vendidos)
                if (v.integer("caballo") == c.numero) {
                    c.tablas = v.number("tablasf");
                    c.venta = v.number("venta");
                }
            out << c;
        }
    });
    return out;
}

bool GerenciaTablaFija::cerrada(const QString& fecha, long long carrera) {
    bool c = false;
    proteger(ctx_, kVentana, [&] {
        c = Row::toInteger(ctx_.servidor().scalar(
                "SELECT count(*) FROM carreras WHERE fecha=? and carrera=? and venta_tf=1 and bloqueotf=0 and "
                "estado_tf=0",
                {fecha, carrera})) == 0;
    });
    return c;
}

std::optional<GerenciaTablaFija::Totales> GerenciaTablaFija::totales(const QString& fecha) {
    std::optional<Totales> out;
    proteger(ctx_, kVentana, [&] {
        Db& db = ctx_.servidor();
        const Params p{fecha, ctx_.session.grupo};
        out = Totales{
            Row::toNumber(db.scalar("SELECT sum(monto) as venta   FROM tablafija where  fecha  = ? and grupo=?", p)),
            Row::toNumber(db.scalar("SELECT sum(cobrado) as monto_cobrado FROM tablafija where (estatus=1 or "
                                    "estatus=2 or estatus=3 or estatus=4 or estatus=6)  and fecha  = ? and grupo=?",
                                    p))};
    });
    return out;
}

bool GerenciaTablaFija::mensaje(const QString& texto) {
    const QString largo = textoDemasiadoLargo(QStringLiteral("EL MENSAJE"), texto.trimmed(), 255);
    if (!largo.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloVerificacionSistema, largo);
        return false;
    }
    return proteger(ctx_, kVentana, [&] {
        ctx_.servidor().exec("update  grupos set mensajech=?  where grupo=?", {texto.trimmed(), ctx_.session.grupo});
        ctx_.dialogs.inform(texto::TituloAdministracionSistema,
                            texto.trimmed().isEmpty() ? QStringLiteral("Mensaje Borrado") : texto::CambiosRealizados);
    });
}

std::optional<GerenciaTablaFija::Busqueda> GerenciaTablaFija::buscar(const Filtro& f) {
    std::optional<Busqueda> out;
    std::optional<long long> caballo;
    if (!f.caballo.trimmed().isEmpty()) {
        caballo = leerEntero(f.caballo);
        if (!caballo || *caballo <= 0) {
            ctx_.dialogs.refuse(texto::TituloBusqueda, texto::CaballoNoValido);
            return out;
        }
    }
    proteger(ctx_, kVentana, [&] {
        std::string sql = std::string("SELECT  numero,nu_boleto,carrera,caballo,tablas,monto,cobrado,estatus,ch,grupo "
                                      "FROM ") +
                          (f.historico ? "ventas_tf" : "tablafija") + " WHERE  fecha  = ? and grupo = ?";
        Params p{f.fecha, ctx_.session.grupo};
        if (!f.centro.isEmpty()) {
            sql += " and ch = ?";
            p.push_back(f.centro);
        }
        if (f.desde > 0) {
            sql += " and carrera  between ? and ?";
            p.insert(p.end(), {f.desde, std::max(f.desde, f.hasta)});
        }
        if (caballo) {
            sql += " and caballo = ?";
            p.push_back(*caballo);
        }
        // The classes, on this window's own status sets.
        if (f.clase == QLatin1String("COBRADOS")) sql += " and " + kPagados.toStdString();
        if (f.clase == QLatin1String("POR PAGAR")) sql += " and " + kPorPagar.toStdString();
        if (f.clase == QLatin1String("RET. POR PAGAR")) sql += " and estatus=4";
        if (f.clase == QLatin1String("RET. PAGADO")) sql += " and estatus=3";
        Busqueda b;
        b.filas = ctx_.servidor().query(sql + " order by numero desc   ", p);
        if (b.filas.empty()) {
            ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
            return;
        }
        for (const Row& r : b.filas) {
            const long long e = r.integer("estatus");
            b.sumamonto += r.number("monto");
            if (e == 2 || e == 4) b.sumacobrado += r.number("cobrado");
            if (e == 1 || e == 3 || e == 6) b.sumaporcobrar += r.number("cobrado");
        }
        out = std::move(b);
    });
    return out;
}

std::optional<ParametrosReporte> GerenciaTablaFija::reporte(const Filtro& f) {
    const auto b = buscar(f);
    if (!b) return std::nullopt;
    std::optional<ParametrosReporte> p;
    proteger(ctx_, kVentana, [&] {
        auto columnas = std::make_shared<Columns>(QStringList{"numero", "boleto", "monto", "carrera", "caballo",
                                                              "tablas", "fecha", "ch", "grupo", "cobrado", "estatus",
                                                              "porcobrar", "cobradoreal"});
        QVector<Row> filas;
        for (const Row& r : b->filas) {
            const long long e = r.integer("estatus");
            const double c = r.number("cobrado");
            filas << Row(columnas, {r.integer("numero"), r.text("nu_boleto"), r.number("monto"), r.integer("carrera"),
                                    r.integer("caballo"), r.number("tablas"), fechaVista(f.fecha), r.text("ch"),
                                    r.text("grupo"), c, e, (e == 1 || e == 3 || e == 6) ? c : 0.0,
                                    (e == 2 || e == 4) ? c : 0.0});
        }
        reescribir(ctx_.local(), "rpt_jugadas", Recordset(columnas, filas));
        p = ParametrosReporte{QStringLiteral("%1 - GRUPO %2").arg(f.clase, ctx_.session.grupo),
                              static_cast<qint32>(f.desde)};
    });
    return p;
}

}  // namespace hipico
