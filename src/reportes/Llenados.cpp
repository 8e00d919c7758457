#include "reportes/Llenados.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Session.h"
#include "reportes/Formatos.h"

#include <QHash>
#include <algorithm>
#include <stdexcept>
#include <vector>

namespace hipico {

namespace {

IngresoRemate& ingresoRemate() {
    static IngresoRemate ingreso;
    return ingreso;
}

// The unit price a group sold at: its own, else the system's.
const char* const kPrecio = "IF(g.valor_ganador > 0, g.valor_ganador, c.valor_ganador)";

std::string precio(const FuenteJuego& j) { return j.porUnidad ? kPrecio : "1"; }

struct Sql {
    std::string texto;
    Params params;
};

// The sums of a game's tickets per group and keys over the consulta's days:
// the working day from the day's table, the others from the kept copies, each
// summed by the server. Columns: the keys, grupo, u (the sale), pagado
// (status 2 and 3), porpagar (1 and 4).
Sql sumasBoletos(Context& ctx, const FuenteJuego& j, const Consulta& c, const QStringList& claves,
                 const CondicionSql& filtro) {
    const QString hoy = ctx.session.fecha;
    // Grouped by the bytes of each key: a text compared by its collation costs
    // several times more over a day of tickets.
    std::string select, grupo;
    for (const QString& k : claves) {
        select += "MIN(t." + k.toStdString() + ") AS " + k.toStdString() + ",";
        grupo += ",CAST(t." + k.toStdString() + " AS BINARY)";
    }
    Sql out;
    const auto parte = [&](const char* tabla, const char* clave, std::string dias, Params valores) {
        std::string indice;
        if (clave && valores.size() == 1) {
            // One day: its first and last key, from the index (ch, fecha, key).
            const Row r = ctx.servidor()
                              .query(std::string("SELECT MIN(a) AS a, MAX(b) AS b FROM (SELECT MIN(") + clave + ") AS a, MAX(" +
                                         clave + ") AS b FROM " + tabla + " WHERE fecha = ? GROUP BY ch) r",
                                     valores)
                              .first();
            if (r.isNull("a")) return;  // no ticket that day
            indice = " FORCE INDEX (PRIMARY)";
            dias += std::string(" AND t.") + clave + " BETWEEN ? AND ?";
            valores.push_back(r.integer("a"));
            valores.push_back(r.integer("b"));
        }
        if (!out.texto.empty()) out.texto += " UNION ALL ";
        out.texto += "SELECT " + select + "MIN(t.grupo) AS grupo,SUM(t." + j.unidades +
                     ") AS u,SUM(IF(t.estatus IN (2,3),t.cobrado,0)) AS pagado,"
                     "SUM(IF(t.estatus IN (1,4),t.cobrado,0)) AS porpagar FROM " +
                     tabla + " t" + indice + " WHERE " + dias + " AND t.estatus <> 5" + filtro.sql +
                     " GROUP BY CAST(t.grupo AS BINARY)" + grupo;
        out.params.insert(out.params.end(), valores.begin(), valores.end());
        out.params.insert(out.params.end(), filtro.params.begin(), filtro.params.end());
    };
    if (c.desde <= hoy && hoy <= c.hasta) parte(j.dia, j.claveDia, "t.fecha = ?", {hoy});
    if (c.unDia() && c.desde != hoy) parte(j.copia, j.claveCopia, "t.fecha = ?", {c.desde});
    else if (!c.unDia()) parte(j.copia, nullptr, "t.fecha BETWEEN ? AND ? AND t.fecha <> ?", {c.desde, c.hasta, hoy});
    // No ticket on any of the days: an empty sum of the right columns.
    if (out.texto.empty()) parte(j.dia, nullptr, "1 = 0", {});
    return out;
}

// The sums joined to their groups and the settings row (for the unit price).
std::string sobreGrupos(const Sql& sumas) {
    return " FROM (" + sumas.texto + ") a LEFT JOIN grupos g ON g.grupo = a.grupo CROSS JOIN configuracion c ";
}

CondicionSql conCarreras(CondicionSql filtro, const Consulta& c, const char* columna) {
    if (c.carreraDesde > 0) {
        filtro.sql += std::string(" and ") + columna + " BETWEEN ? AND ?";
        filtro.params.push_back(c.carreraDesde);
        filtro.params.push_back(c.carreraHasta);
    }
    return filtro;
}

}  // namespace

const FuenteJuego& fuenteGanadores() {
    static const FuenteJuego j{"ma_principal", "ventas_ganadores", "ventas_ganadores_general", "", "ganadores", true,
                               "numero", "id_venta"};
    return j;
}
const FuenteJuego& fuenteTablaFija() {
    static const FuenteJuego j{"tablafija", "ventas_tf", "ventas_tf_general", "", "monto", false};
    return j;
}
const FuenteJuego& fuenteMacuare() {
    // A Macuare ticket costs its amount times its veces.
    static const FuenteJuego j{"macuares", "ventas_mc", "ventas_mc_general", "", "monto * t.veces", false};
    return j;
}
const FuenteJuego& fuentePuestos() {
    static const FuenteJuego j{nullptr, nullptr, "ventas_generales", "PUESTOS", "monto", false};
    return j;
}
const FuenteJuego& fuenteDinamicas() {
    static const FuenteJuego j{nullptr, nullptr, "ventas_generales", "DINAMICAS", "monto", false};
    return j;
}

void ponerIngresoRemate(IngresoRemate ingreso) { ingresoRemate() = std::move(ingreso); }

QString textoLocal(const QString& texto, int largo) {
    QString out = texto.left(largo);
    for (QChar& c : out)
        if (c.unicode() > 0xFF) c = QLatin1Char('?');
    return out;
}

long long reescribir(Db& local, const char* tabla, const Recordset& filas) {
    // The table's columns, and the width of its text columns.
    QHash<QString, int> largo;
    for (const Row& r : local.query("SELECT COLUMN_NAME, COALESCE(CHARACTER_MAXIMUM_LENGTH, 0) AS largo FROM "
                                    "information_schema.COLUMNS WHERE TABLE_SCHEMA = DATABASE() AND TABLE_NAME = ?",
                                    {tabla}))
        largo.insert(r.text("COLUMN_NAME").toLower(), r.toInt("largo"));
    std::string columnas, tupla;
    std::vector<int> anchos;  // of each column of the rows (0: not a text)
    for (const QString& c : filas.columnNames()) {
        if (!largo.contains(c.toLower()))
            throw std::logic_error(QStringLiteral("%1 no tiene la columna %2").arg(tabla, c).toStdString());
        columnas += (columnas.empty() ? "`" : ",`") + c.toStdString() + "`";
        tupla += tupla.empty() ? "(?" : ",?";
        anchos.push_back(largo.value(c.toLower()));
    }
    tupla += ")";
    const int n = filas.columns().size();
    constexpr int kPorSentencia = 400;
    return local.inTransaction([&] {
        local.exec(std::string("DELETE from ") + tabla);
        long long escritas = 0;
        for (int desde = 0; desde < filas.size(); desde += kPorSentencia) {
            const int hasta = std::min<int>(filas.size(), desde + kPorSentencia);
            std::string sql = std::string("INSERT INTO `") + tabla + "` (" + columnas + ") VALUES ";
            Params params;
            params.reserve(static_cast<std::size_t>(hasta - desde) * n);
            for (int f = desde; f < hasta; ++f) {
                sql += (f == desde ? "" : ",") + tupla;
                const QVector<QVariant>& valores = filas[f].values();
                for (int c = 0; c < n; ++c)
                    params.push_back(anchos[c] > 0 ? SqlValue(textoLocal(Row::toText(valores[c]), anchos[c]))
                                                   : toSqlValue(valores[c]));
            }
            escritas += local.exec(sql, params);
        }
        return escritas;
    });
}

Recordset filasResultados(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const bool porCentro = c.alcance.tipo == Alcance::Tipo::Subgrupo;
    const Sql sumas = sumasBoletos(ctx, j, c, {"carrera"},
                                   conCarreras(condicionAlcance(ctx.session, c.alcance, "t.grupo"), c, "t.carrera"));
    // By subgroup each centre apart; otherwise the scope names the rows.
    Params params;
    if (!porCentro) params.push_back(c.alcance.texto());
    params.push_back(fechaVista(c.desde));
    params.insert(params.end(), sumas.params.begin(), sumas.params.end());
    return ctx.servidor().query(
        std::string("SELECT ") + (porCentro ? "COALESCE(g.ch,'')" : "?") +
            " AS ch,? AS fecha,a.carrera AS carrera,SUM(a.u*" + precio(j) +
            ") AS jugado,SUM(a.pagado) AS cobrado,SUM(a.porpagar) AS monto_porpagar,SUM(a.u*" + precio(j) +
            ")-SUM(a.pagado)-SUM(a.porpagar) AS total" + sobreGrupos(sumas) + "GROUP BY 1,a.carrera ORDER BY 1,a.carrera",
        params);
}

Recordset filasDividendos(Context& ctx, const Consulta& c) {
    // One row per processed race and track, the winners' names from the card.
    return ctx.servidor().query(
        "SELECT ? AS fecha,IF(d.nombre2 = '', d.nombre, CONCAT(d.nombre, ' / ', d.nombre2)) AS caballo,d.num_cab,"
        "d.dividendo,d.ch,d.carrera,d.num_cab2,d.dividendo2 FROM (SELECT c.carrera,COALESCE(MAX(h.hipodromo),'') AS ch,"
        "MAX(c.win_ganadores) AS num_cab,MAX(c.dividendo) AS dividendo,MAX(c.win_ganadores2) AS num_cab2,"
        "MAX(c.dividendo2) AS dividendo2,MAX(IF(c.nu_caballo = c.win_ganadores, c.caballo, '')) AS nombre,"
        "MAX(IF(c.win_ganadores2 > 0 AND c.nu_caballo = c.win_ganadores2, c.caballo, '')) AS nombre2 "
        "FROM carreras c LEFT JOIN hipodromos h ON h.id_hipodromo = c.id_hipodromo "
        "WHERE c.fecha = ? AND c.win_ganadores > 0 GROUP BY c.id_hipodromo,c.carrera) d ORDER BY d.ch,d.carrera",
        {fechaVista(c.desde), c.desde});
}

Recordset filasDiario(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const Session& s = ctx.session;
    // Per group and day: grupo, fecha, hipico, the shares' percentages, venta, premios, porpagar.
    Sql x;
    if (c.unDia() && j.dia) {
        const Sql sumas = sumasBoletos(ctx, j, c, {"fecha"}, condicionAlcance(s, c.alcance, "t.grupo"));
        x.texto = "SELECT a.grupo,a.fecha,COALESCE(MAX(g.ch),'') AS hipico,COALESCE(MAX(g.por_ch),0) AS pch,"
                  "COALESCE(MAX(g.por_casa),0) AS pcasa,COALESCE(MAX(g.por_admin),0) AS padmin,SUM(a.u*" +
                  precio(j) + ") AS venta,SUM(a.pagado) AS premios,SUM(a.porpagar) AS porpagar" + sobreGrupos(sumas) +
                  "GROUP BY a.grupo,a.fecha";
        x.params = sumas.params;
    } else {
        const CondicionSql alcance = condicionAlcance(s, c.alcance, "v.grupo");
        x.texto = std::string("SELECT v.grupo,v.fecha,COALESCE(g.ch,'') AS hipico,COALESCE(g.por_ch,0) AS pch,"
                              "COALESCE(g.por_casa,0) AS pcasa,COALESCE(g.por_admin,0) AS padmin,v.venta,v.premios,"
                              "v.monto_porpagar AS porpagar FROM ") +
                  j.totales + " v LEFT JOIN grupos g ON g.grupo = v.grupo WHERE v.fecha BETWEEN ? AND ? AND " +
                  (*j.juego ? "v.juego = ?" : "? = ''") + alcance.sql +
                  " AND (v.venta <> 0 OR v.premios <> 0 OR v.monto_porpagar <> 0)";
        x.params = {c.desde, c.hasta, QString::fromLatin1(j.juego)};
        x.params.insert(x.params.end(), alcance.params.begin(), alcance.params.end());
    }
    // The balance is what stays after the prizes paid and the prizes still
    // due; the shares split it, each its own product, unrounded.
    Params params{fechaVista(c.desde), fechaVista(c.hasta)};
    params.insert(params.end(), x.params.begin(), x.params.end());
    return ctx.servidor().query(
        "SELECT x.grupo AS ch,x.venta AS venta,x.fecha AS fecha,x.hipico AS chipico,? AS fecha_inicio,? AS fecha_final,"
        "x.venta-x.premios-x.porpagar AS saldo,x.premios AS premios,x.porpagar AS monto_porpagar,"
        "(x.venta-x.premios-x.porpagar)*x.pch/100 AS por_ch,(x.venta-x.premios-x.porpagar)*x.pcasa/100 AS por_casa,"
        "(x.venta-x.premios-x.porpagar)*x.padmin/100 AS por_admin FROM (" +
            x.texto + ") x ORDER BY x.hipico,x.grupo,x.fecha",
        params);
}

Recordset filasGeneral(Context& ctx, const Consulta& c, bool porCarreras) {
    const Session& s = ctx.session;
    Sql sql;
    const auto agregar = [&](const std::string& parte, Params params, const char* columnaGrupo) {
        const CondicionSql a = condicionAlcance(s, c.alcance, columnaGrupo);
        if (!sql.texto.empty()) sql.texto += " UNION ALL ";
        sql.texto += parte + a.sql + " GROUP BY 1,2";
        params.insert(params.end(), a.params.begin(), a.params.end());
        sql.params.insert(sql.params.end(), params.begin(), params.end());
    };
    const std::string descargas = std::string("SELECT COALESCE(g.ch,'') AS ch,d.fecha AS fecha,'L' AS j,SUM(d.cobrado-d.ganadores*") +
                                  kPrecio + ") AS m FROM descargas d LEFT JOIN grupos g ON g.grupo = d.grupo "
                                            "CROSS JOIN configuracion c WHERE ";
    if (porCarreras) {
        // One day's races, from the tickets: sale less every prize, paid or due.
        for (const auto& [clave, juego] : {std::pair{"G", &fuenteGanadores()}, std::pair{"T", &fuenteTablaFija()}}) {
            // One day: its sums need no date of their own.
            const Sql sumas =
                sumasBoletos(ctx, *juego, c, {}, conCarreras(condicionAlcance(s, c.alcance, "t.grupo"), c, "t.carrera"));
            sql.texto += std::string(sql.texto.empty() ? "" : " UNION ALL ") + "SELECT COALESCE(g.ch,'') AS ch,? AS fecha,'" +
                         clave + "' AS j,SUM(a.u*" + precio(*juego) + "-a.pagado-a.porpagar) AS m" + sobreGrupos(sumas) +
                         "GROUP BY 1,2";
            sql.params.push_back(c.desde);
            sql.params.insert(sql.params.end(), sumas.params.begin(), sumas.params.end());
        }
        agregar(descargas + "d.fecha = ? AND d.carrera BETWEEN ? AND ?", {c.desde, c.carreraDesde, c.carreraHasta}, "d.grupo");
    } else {
        // A date range, from the daily totals each game keeps per group.
        struct Fuente {
            const char* clave;
            const char* tabla;
            const char* juego;
            const char* monto;
        };
        const char* const neto = "v.venta-v.premios-v.monto_porpagar";
        for (const Fuente& f : {Fuente{"G", "ventas_ganadores_general", "", neto}, Fuente{"R", "ventas_ganadores_general", "", "v.remate"},
                                Fuente{"T", "ventas_tf_general", "", neto}, Fuente{"M", "ventas_mc_general", "", neto},
                                Fuente{"P", "ventas_generales", "PUESTOS", neto}, Fuente{"D", "ventas_generales", "DINAMICAS", neto}})
            agregar(std::string("SELECT COALESCE(g.ch,'') AS ch,v.fecha AS fecha,'") + f.clave + "' AS j,SUM(" + f.monto +
                        ") AS m FROM " + f.tabla + " v LEFT JOIN grupos g ON g.grupo = v.grupo WHERE v.fecha BETWEEN ? AND ? AND " +
                        (*f.juego ? "v.juego = ?" : "? = ''"),
                    {c.desde, c.hasta, QString::fromLatin1(f.juego)}, "v.grupo");
        agregar(descargas + "d.fecha BETWEEN ? AND ?", {c.desde, c.hasta}, "d.grupo");
    }
    Params params{fechaVista(c.desde), fechaVista(c.hasta)};
    params.insert(params.end(), sql.params.begin(), sql.params.end());
    const Recordset filas = ctx.servidor().query(
        "SELECT x.fecha AS fecha,SUM(IF(x.j='G',x.m,0)) AS ganadores,SUM(IF(x.j='T',x.m,0)) AS tablafija,"
        "SUM(IF(x.j='R',x.m,0)) AS remate,SUM(IF(x.j='M',x.m,0)) AS macuare,SUM(IF(x.j='P',x.m,0)) AS puestos,"
        "? AS fecha_inicio,? AS fecha_final,x.ch AS ch,SUM(IF(x.j='D',x.m,0)) AS dinamicas,"
        "SUM(IF(x.j='L',x.m,0)) AS descargas FROM (" +
            sql.texto + ") x GROUP BY x.ch,x.fecha HAVING SUM(ABS(x.m)) > 0 ORDER BY x.ch,x.fecha",
        params);
    if (!ingresoRemate()) return filas;
    // The auction boards' own income of each centre and day.
    const int remate = filas.columns().indexOf(QStringLiteral("remate"));
    QVector<Row> conRemate;
    for (const Row& r : filas) {
        QVector<QVariant> valores = r.values();
        valores[remate] = ingresoRemate()(ctx, r.text("ch"), r.text("fecha"), c.carreraDesde, c.carreraHasta);
        conRemate << Row(filas.sharedColumns(), valores);
    }
    return Recordset(filas.sharedColumns(), conRemate);
}

Recordset filasBitacora(Context& ctx, bool tablaFija, const Consulta& c) {
    const CondicionSql alcance = condicionAlcance(ctx.session, c.alcance, "b.grupo");
    // Group listings may, and subgroup listings always, show the voided tickets only.
    const bool anulados = c.alcance.tipo == Alcance::Tipo::Subgrupo || (c.alcance.tipo == Alcance::Tipo::Grupo && c.opcion);
    Params params;
    for (int e = 0; e <= 5; ++e) params.push_back(nombreEstatus(e));
    params.insert(params.end(), {fechaVista(c.desde), fechaVista(c.hasta), c.desde, c.hasta});
    params.insert(params.end(), alcance.params.begin(), alcance.params.end());
    return ctx.servidor().query(
        std::string("SELECT b.numero,b.carrera,b.caballo,") + (tablaFija ? "b.monto,b.tablas" : "b.ganadores") +
            ",b.taquilla,b.grupo,b.hora,b.fecha,b.nu_boleto,b.cobrado,b.motivo,b.usuario,"
            "COALESCE(ELT(b.estatus + 1,?,?,?,?,?,?),b.estatus) AS tipo_motivo,? AS fecha_inicio,? AS fecha_final,"
            "b.estatus FROM " +
            (tablaFija ? "bitacora_tf" : "bitacora") + " b WHERE b.fecha BETWEEN ? AND ?" + alcance.sql +
            (anulados ? " AND b.estatus = 5" : "") + " ORDER BY b.id DESC",
        params);
}

Recordset filasTaquillas(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const Sql sumas = sumasBoletos(ctx, j, c, {"ch", "fecha"}, condicionAlcance(ctx.session, c.alcance, "t.grupo"));
    return ctx.servidor().query("SELECT a.ch AS taquilla,a.ch AS ch,DATE_FORMAT(a.fecha,'%d-%m-%Y') AS fecha,SUM(a.u*" +
                                    precio(j) + ") AS jugado,SUM(a.pagado) AS cobrado,SUM(a.porpagar) AS monto_porpagar,SUM(a.u*" +
                                    precio(j) + ")-SUM(a.pagado)-SUM(a.porpagar) AS total" + sobreGrupos(sumas) +
                                    "GROUP BY a.ch,a.fecha ORDER BY a.ch,a.fecha",
                                sumas.params);
}

Recordset filasJugadas(const Recordset& boletos, const QString& fecha, double valorGanador) {
    auto columnas = std::make_shared<Columns>(QStringList{"numero", "boleto", "monto", "carrera", "caballo", "ganadores",
                                                          "tablas", "fecha", "ch", "grupo", "cobrado", "estatus",
                                                          "porcobrar", "cobradoreal"});
    QVector<Row> filas;
    filas.reserve(boletos.size());
    const QString vista = fechaVista(fecha);
    for (const Row& r : boletos) {
        const long long estatus = r.integer("estatus");
        const double cobrado = r.number("cobrado");
        const bool porCobrar = estatus == 1 || estatus == 4, pagado = estatus == 2 || estatus == 3;
        // A fixed-table ticket keeps its tables and money; winner units are money at the unit price.
        const double monto = r.has("monto") ? r.number("monto") : r.numberOr("ganadores") * valorGanador;
        filas << Row(columnas, {r.integer("numero"), r.text("nu_boleto"), monto, r.integer("carrera"),
                                r.integer("caballo"), r.numberOr("ganadores"), r.numberOr("tablas"), vista, r.text("ch"),
                                r.text("grupo"), cobrado, estatus, porCobrar ? cobrado : 0.0, pagado ? cobrado : 0.0});
    }
    return Recordset(columnas, filas);
}

}  // namespace hipico
