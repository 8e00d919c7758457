#include "reportes/Llenados.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "reportes/Formatos.h"
#include "reportes/FilasReporte.h"

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
    std::string select, grupo;
    for (const QString& k : claves) {
        select += "t." + k.toStdString() + " AS " + k.toStdString() + ",";
        grupo += ",t." + k.toStdString();
    }
    Sql out;
    const auto parte = [&](const char* tabla, const std::string& dias, const Params& valores) {
        if (!out.texto.empty()) out.texto += " UNION ALL ";
        out.texto += "SELECT " + select + "t.grupo AS grupo,SUM(t." + j.unidades +
                     ") AS u,SUM(IF(t.estatus IN (2,3),t.cobrado,0)) AS pagado,"
                     "SUM(IF(t.estatus IN (1,4),t.cobrado,0)) AS porpagar FROM " +
                     tabla + " t WHERE " + dias + " AND t.estatus <> 5" + filtro.sql + " GROUP BY t.grupo" + grupo;
        out.params.insert(out.params.end(), valores.begin(), valores.end());
        out.params.insert(out.params.end(), filtro.params.begin(), filtro.params.end());
    };
    if (c.desde <= hoy && hoy <= c.hasta) parte(j.dia, "t.fecha = ?", {hoy});
    if (!(c.unDia() && c.desde == hoy)) parte(j.copia, "t.fecha BETWEEN ? AND ? AND t.fecha <> ?", {c.desde, c.hasta, hoy});
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
    static const FuenteJuego j{"ma_principal", "ventas_ganadores", "ventas_ganadores_general", "", "ganadores", true};
    return j;
}
const FuenteJuego& fuenteTablaFija() {
    static const FuenteJuego j{"tablafija", "ventas_tf", "ventas_tf_general", "", "monto", false};
    return j;
}
const FuenteJuego& fuenteMacuare() {
    static const FuenteJuego j{"macuares", "ventas_mc", "ventas_mc_general", "", "monto", false};
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

long long reescribir(Db& local, const char* tabla, const std::vector<Insercion>& filas) {
    return local.inTransaction([&] {
        local.exec(std::string("DELETE from ") + tabla);
        return insertarLote(local, filas);
    });
}

std::vector<Insercion> filasResultados(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const Session& s = ctx.session;
    const bool porCentro = c.alcance.tipo == Alcance::Tipo::Subgrupo;
    const Sql sumas = sumasBoletos(ctx, j, c, {"carrera"},
                                   conCarreras(condicionAlcance(s, c.alcance, "t.grupo"), c, "t.carrera"));
    const std::string sql = std::string("SELECT ") + (porCentro ? "COALESCE(g.ch,'')" : "''") +
                            " AS hipico,a.carrera,SUM(a.u*" + precio(j) +
                            ") AS jugado,SUM(a.pagado) AS pagado,SUM(a.porpagar) AS porpagar" + sobreGrupos(sumas) +
                            "GROUP BY hipico,a.carrera ORDER BY hipico,a.carrera";
    std::vector<Insercion> filas;
    const QString fecha = fechaVista(c.desde);
    for (const Row& r : ctx.servidor().query(sql, sumas.params)) {
        FilaResultado f;
        f.ch = porCentro ? r.text("hipico") : c.alcance.texto();
        f.fecha = fecha;
        f.carrera = r.integer("carrera");
        f.jugado = r.number("jugado");
        f.cobrado = r.number("pagado");
        f.porPagar = r.number("porpagar");
        f.total = f.jugado - f.cobrado - f.porPagar;
        filas.push_back(f.insercion());
    }
    return filas;
}

std::vector<Insercion> filasDividendos(Context& ctx, const Consulta& c) {
    // One row per processed race and track, the winners' names from the card.
    const char* const sql =
        "SELECT c.carrera,COALESCE(MAX(h.hipodromo),'') AS hipodromo,MAX(c.win_ganadores) AS num_cab,"
        "MAX(c.dividendo) AS dividendo,MAX(c.win_ganadores2) AS num_cab2,MAX(c.dividendo2) AS dividendo2,"
        "MAX(IF(c.nu_caballo = c.win_ganadores, c.caballo, '')) AS nombre,"
        "MAX(IF(c.win_ganadores2 > 0 AND c.nu_caballo = c.win_ganadores2, c.caballo, '')) AS nombre2 "
        "FROM carreras c LEFT JOIN hipodromos h ON h.id_hipodromo = c.id_hipodromo "
        "WHERE c.fecha = ? AND c.win_ganadores > 0 GROUP BY c.id_hipodromo,c.carrera ORDER BY hipodromo,c.carrera";
    std::vector<Insercion> filas;
    for (const Row& r : ctx.servidor().query(sql, {c.desde})) {
        FilaDividendo f;
        f.fecha = fechaVista(c.desde);
        f.carrera = r.integer("carrera");
        f.numCab = r.integer("num_cab");
        f.dividendo = r.number("dividendo");
        f.numCab2 = r.integer("num_cab2");
        f.dividendo2 = r.number("dividendo2");
        f.caballo = r.text("nombre2").isEmpty() ? r.text("nombre") : r.text("nombre") + " / " + r.text("nombre2");
        f.ch = r.text("hipodromo");
        filas.push_back(f.insercion());
    }
    return filas;
}

std::vector<Insercion> filasDiario(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const Session& s = ctx.session;
    Recordset rs;
    if (c.unDia() && j.dia) {
        const Sql sumas = sumasBoletos(ctx, j, c, {"fecha"}, condicionAlcance(s, c.alcance, "t.grupo"));
        rs = ctx.servidor().query(
            "SELECT a.grupo,a.fecha,COALESCE(MAX(g.ch),'') AS hipico,COALESCE(MAX(g.por_ch),0) AS por_ch,"
            "COALESCE(MAX(g.por_casa),0) AS por_casa,COALESCE(MAX(g.por_admin),0) AS por_admin,SUM(a.u*" +
                precio(j) + ") AS venta,SUM(a.pagado) AS premios,SUM(a.porpagar) AS monto_porpagar" + sobreGrupos(sumas) +
                "GROUP BY a.grupo,a.fecha ORDER BY hipico,a.grupo,a.fecha",
            sumas.params);
    } else {
        const CondicionSql alcance = condicionAlcance(s, c.alcance, "v.grupo");
        Params params{c.desde, c.hasta, QString::fromLatin1(j.juego)};
        params.insert(params.end(), alcance.params.begin(), alcance.params.end());
        rs = ctx.servidor().query(
            std::string("SELECT v.grupo,v.fecha,COALESCE(g.ch,'') AS hipico,COALESCE(g.por_ch,0) AS por_ch,"
                        "COALESCE(g.por_casa,0) AS por_casa,COALESCE(g.por_admin,0) AS por_admin,v.venta,v.premios,"
                        "v.monto_porpagar FROM ") +
                j.totales + " v LEFT JOIN grupos g ON g.grupo = v.grupo WHERE v.fecha BETWEEN ? AND ? AND " +
                (*j.juego ? "v.juego = ?" : "? = ''") + alcance.sql +
                " AND (v.venta <> 0 OR v.premios <> 0 OR v.monto_porpagar <> 0) ORDER BY hipico,v.grupo,v.fecha",
            params);
    }
    std::vector<Insercion> filas;
    for (const Row& r : rs) {
        FilaDiario f;
        f.grupo = r.text("grupo");
        f.fecha = r.text("fecha");
        f.centro = r.text("hipico");
        f.desde = fechaVista(c.desde);
        f.hasta = fechaVista(c.hasta);
        f.venta = r.number("venta");
        f.premios = r.number("premios");
        f.porPagar = r.number("monto_porpagar");
        // The balance is what stays after the prizes paid and the prizes still
        // due; the shares split it, each its own product, unrounded.
        f.saldo = f.venta - f.premios - f.porPagar;
        f.porCh = f.saldo * r.number("por_ch") / 100;
        f.porCasa = f.saldo * r.number("por_casa") / 100;
        f.porAdmin = f.saldo * r.number("por_admin") / 100;
        filas.push_back(f.insercion());
    }
    return filas;
}

std::vector<Insercion> filasGeneral(Context& ctx, const Consulta& c, bool porCarreras) {
    const Session& s = ctx.session;
    Sql sql;
    const auto agregar = [&](const std::string& parte, const Params& params) {
        if (!sql.texto.empty()) sql.texto += " UNION ALL ";
        sql.texto += parte;
        sql.params.insert(sql.params.end(), params.begin(), params.end());
    };
    const auto conAlcance = [&](Params params, const char* columna) {
        const CondicionSql a = condicionAlcance(s, c.alcance, columna);
        params.insert(params.end(), a.params.begin(), a.params.end());
        return std::make_pair(a.sql, params);
    };
    if (porCarreras) {
        // One day's races, from the tickets: sale less every prize, paid or due.
        for (const auto& [clave, juego] : {std::pair{"G", &fuenteGanadores()}, std::pair{"T", &fuenteTablaFija()}}) {
            const Sql sumas =
                sumasBoletos(ctx, *juego, c, {"fecha"}, conCarreras(condicionAlcance(s, c.alcance, "t.grupo"), c, "t.carrera"));
            agregar(std::string("SELECT COALESCE(g.ch,'') AS ch,a.fecha AS fecha,'") + clave + "' AS j,SUM(a.u*" +
                        precio(*juego) + "-a.pagado-a.porpagar) AS m" + sobreGrupos(sumas) + "GROUP BY 1,2",
                    sumas.params);
        }
        const auto [cond, params] = conAlcance({c.desde, c.carreraDesde, c.carreraHasta}, "d.grupo");
        agregar(std::string("SELECT COALESCE(g.ch,'') AS ch,d.fecha AS fecha,'L' AS j,SUM(d.cobrado-d.ganadores*") + kPrecio +
                    ") AS m FROM descargas d LEFT JOIN grupos g ON g.grupo = d.grupo CROSS JOIN configuracion c "
                    "WHERE d.fecha = ? AND d.carrera BETWEEN ? AND ?" + cond + " GROUP BY 1,2",
                params);
    } else {
        // A date range, from the daily totals each game keeps per group.
        struct Fuente {
            const char* clave;
            const char* tabla;
            const char* juego;
            const char* monto;
        };
        for (const Fuente& f : {Fuente{"G", "ventas_ganadores_general", "", "v.venta-v.premios-v.monto_porpagar"},
                                Fuente{"R", "ventas_ganadores_general", "", "v.remate"},
                                Fuente{"T", "ventas_tf_general", "", "v.venta-v.premios-v.monto_porpagar"},
                                Fuente{"M", "ventas_mc_general", "", "v.venta-v.premios-v.monto_porpagar"},
                                Fuente{"P", "ventas_generales", "PUESTOS", "v.venta-v.premios-v.monto_porpagar"},
                                Fuente{"D", "ventas_generales", "DINAMICAS", "v.venta-v.premios-v.monto_porpagar"}}) {
            const auto [cond, params] = conAlcance({c.desde, c.hasta, QString::fromLatin1(f.juego)}, "v.grupo");
            agregar(std::string("SELECT COALESCE(g.ch,'') AS ch,v.fecha AS fecha,'") + f.clave + "' AS j,SUM(" + f.monto +
                        ") AS m FROM " + f.tabla + " v LEFT JOIN grupos g ON g.grupo = v.grupo WHERE v.fecha BETWEEN ? AND ? AND " +
                        (*f.juego ? "v.juego = ?" : "? = ''") + cond + " GROUP BY 1,2",
                    params);
        }
        const auto [cond, params] = conAlcance({c.desde, c.hasta}, "d.grupo");
        agregar(std::string("SELECT COALESCE(g.ch,'') AS ch,d.fecha AS fecha,'L' AS j,SUM(d.cobrado-d.ganadores*") + kPrecio +
                    ") AS m FROM descargas d LEFT JOIN grupos g ON g.grupo = d.grupo CROSS JOIN configuracion c "
                    "WHERE d.fecha BETWEEN ? AND ?" + cond + " GROUP BY 1,2",
                params);
    }
    const std::string pivote =
        "SELECT x.ch,x.fecha,SUM(IF(x.j='G',x.m,0)) AS ganadores,SUM(IF(x.j='T',x.m,0)) AS tablafija,"
        "SUM(IF(x.j='R',x.m,0)) AS remate,SUM(IF(x.j='M',x.m,0)) AS macuare,SUM(IF(x.j='P',x.m,0)) AS puestos,"
        "SUM(IF(x.j='D',x.m,0)) AS dinamicas,SUM(IF(x.j='L',x.m,0)) AS descargas FROM (" +
        sql.texto + ") x GROUP BY x.ch,x.fecha HAVING SUM(ABS(x.m)) > 0 ORDER BY x.ch,x.fecha";
    std::vector<Insercion> filas;
    for (const Row& r : ctx.servidor().query(pivote, sql.params)) {
        FilaGeneral f;
        f.ch = r.text("ch");
        f.fecha = r.text("fecha");
        f.desde = fechaVista(c.desde);
        f.hasta = fechaVista(c.hasta);
        f.ganadores = r.number("ganadores");
        f.tablafija = r.number("tablafija");
        f.macuare = r.number("macuare");
        f.puestos = r.number("puestos");
        f.dinamicas = r.number("dinamicas");
        f.descargas = r.number("descargas");
        f.remate = ingresoRemate() ? ingresoRemate()(ctx, f.ch, f.fecha, c.carreraDesde, c.carreraHasta)
                                   : r.number("remate");
        filas.push_back(f.insercion());
    }
    return filas;
}

std::vector<Insercion> filasBitacora(Context& ctx, bool tablaFija, const Consulta& c) {
    const CondicionSql alcance = condicionAlcance(ctx.session, c.alcance, "b.grupo");
    // Group listings may, and subgroup listings always, show the voided tickets only.
    const bool anulados = c.alcance.tipo == Alcance::Tipo::Subgrupo || (c.alcance.tipo == Alcance::Tipo::Grupo && c.opcion);
    Params params{c.desde, c.hasta};
    params.insert(params.end(), alcance.params.begin(), alcance.params.end());
    const Recordset rs = ctx.servidor().query(std::string("SELECT b.* FROM ") + (tablaFija ? "bitacora_tf" : "bitacora") +
                                                  " b WHERE b.fecha BETWEEN ? AND ?" + alcance.sql +
                                                  (anulados ? " AND b.estatus = 5" : "") + " ORDER BY b.id DESC",
                                              params);
    std::vector<Insercion> filas;
    filas.reserve(rs.size());
    for (const Row& r : rs) {
        FilaBitacora f;
        f.numero = r.integer("numero");
        f.carrera = r.integer("carrera");
        f.caballo = r.integer("caballo");
        f.ganadores = r.numberOr("ganadores");
        f.monto = r.numberOr("monto");
        f.tablas = r.numberOr("tablas");
        f.taquilla = r.text("taquilla");
        f.grupo = r.text("grupo");
        f.hora = r.text("hora");
        f.fecha = r.text("fecha");
        f.nuBoleto = r.text("nu_boleto");
        f.cobrado = r.number("cobrado");
        f.motivo = r.text("motivo");
        f.usuario = r.text("usuario");
        f.estatus = r.integer("estatus");
        f.tipoMotivo = nombreEstatus(f.estatus);
        f.desde = fechaVista(c.desde);
        f.hasta = fechaVista(c.hasta);
        filas.push_back(f.insercion());
    }
    return filas;
}

std::vector<Insercion> filasTaquillas(Context& ctx, const FuenteJuego& j, const Consulta& c) {
    const Sql sumas = sumasBoletos(ctx, j, c, {"ch", "fecha"}, condicionAlcance(ctx.session, c.alcance, "t.grupo"));
    const std::string sql = "SELECT a.ch,a.fecha,SUM(a.u*" + precio(j) +
                            ") AS jugado,SUM(a.pagado) AS pagado,SUM(a.porpagar) AS porpagar" + sobreGrupos(sumas) +
                            "GROUP BY a.ch,a.fecha ORDER BY a.ch,a.fecha";
    std::vector<Insercion> filas;
    for (const Row& r : ctx.servidor().query(sql, sumas.params)) {
        const double jugado = r.number("jugado"), pagado = r.number("pagado"), porPagar = r.number("porpagar");
        filas.push_back(resultadoTaquilla(textoLocal(r.text("ch"), 45), fechaVista(r.text("fecha")), jugado, pagado,
                                          jugado - pagado - porPagar, porPagar));
    }
    return filas;
}

std::vector<Insercion> filasJugadas(const Recordset& boletos, const QString& fecha, double valorGanador) {
    std::vector<Insercion> filas;
    filas.reserve(boletos.size());
    const QString vista = fechaVista(fecha);
    for (const Row& r : boletos) {
        FilaJugada f;
        f.numero = r.integer("numero");
        f.boleto = r.text("nu_boleto");
        f.carrera = r.integer("carrera");
        f.caballo = r.integer("caballo");
        f.ganadores = r.number("ganadores");
        f.monto = f.ganadores * valorGanador;
        f.fecha = vista;
        f.ch = r.text("ch");
        f.grupo = r.text("grupo");
        f.cobrado = r.number("cobrado");
        f.estatus = r.integer("estatus");
        if (f.estatus == 1 || f.estatus == 4) f.porCobrar = f.cobrado;
        if (f.estatus == 2 || f.estatus == 3) f.cobradoReal = f.cobrado;
        filas.push_back(f.insercion());
    }
    return filas;
}

}  // namespace hipico
