#include "reportes/VentanasReporte.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "reportes/Formatos.h"

#include <QFile>
#include <QTextStream>

namespace hipico {

namespace {

// One day's kind, else the range's.
std::function<int(const Consulta&)> diaORango(int dia, int rango) {
    return [dia, rango](const Consulta& c) { return c.unDia() ? dia : rango; };
}
std::function<int(const Consulta&)> siempre(int tipo) {
    return [tipo](const Consulta&) { return tipo; };
}

using Llenado = std::function<Recordset(Context&, const Consulta&)>;

// A window that asks one day and offers "TODOS" and the groups.
DescripcionReporte ventana(const char* nombre, const char* entrada, const char* titulo, const char* tabla, Llenado llenar,
                           std::function<int(const Consulta&)> tipo) {
    DescripcionReporte d;
    d.nombre = QString::fromUtf8(nombre);
    d.entrada = QString::fromUtf8(entrada);
    d.titulo = QString::fromUtf8(titulo);
    d.tabla = tabla;
    d.llenar = std::move(llenar);
    d.tipo = std::move(tipo);
    return d;
}

// A sales summary: a date range (one day from the tickets), groups and subgroups.
DescripcionReporte resumen(const char* nombre, const char* entrada, const char* titulo, const FuenteJuego& j, int dia,
                           int rango) {
    DescripcionReporte d = ventana(nombre, entrada, titulo, "rpt_diario",
                                   [&j](Context& ctx, const Consulta& c) { return filasDiario(ctx, j, c); }, diaORango(dia, rango));
    d.rango = true;
    d.subgrupos = true;
    return d;
}

QVector<DescripcionReporte> construir() {
    QVector<DescripcionReporte> v;
    const auto resultados = [](const FuenteJuego& j) {
        return [&j](Context& ctx, const Consulta& c) { return filasResultados(ctx, j, c); };
    };
    // By subgroup the races are shown per centre.
    DescripcionReporte d = ventana("Form_ResultadosCarreras_WIN", "rc_admin_menu", "RESULTADOS DE CARRERAS - GANADORES",
                                   "rpt_resultadoscarreras", resultados(fuenteGanadores()),
                                   [](const Consulta& c) { return c.alcance.tipo == Alcance::Tipo::Subgrupo ? 7 : 34; });
    d.carreras = true;
    d.subgrupos = true;
    v << d;
    v << ventana("Form_ResultadosCarreras_TF", "rctf_admin_menu", "RESULTADOS DE CARRERAS - TABLA FIJA",
                 "rpt_resultadoscarreras", resultados(fuenteTablaFija()), siempre(21));
    d = ventana("Form_Rpt_Dividendos", "dd_admin_menu", "DIVIDENDOS DEL DÍA", "rpt_dividendos", filasDividendos, siempre(5));
    d.grupos = false;
    v << d;
    d = resumen("Form_GanTF", "cuadre_gantf_menu", "GANANCIA - TABLA FIJA", fuenteTablaFija(), 28, 27);
    d.subgrupos = false;
    v << d;

    for (const bool porCarreras : {false, true}) {
        d = ventana(porCarreras ? "Form_ReporteGeneralC" : "Form_ReporteGeneral",
                    porCarreras ? "gpc_rptgeneral" : "rpt_gen_admin_menu",
                    porCarreras ? "REPORTE GENERAL POR CARRERAS" : "REPORTE GENERAL", "rpt_general",
                    [porCarreras](Context& ctx, const Consulta& c) { return filasGeneral(ctx, c, porCarreras); }, siempre(29));
        d.rango = !porCarreras;  // one day's race range, or a date range
        d.carreras = porCarreras;
        d.subgrupos = true;
        d.exportaTexto = true;
        v << d;
    }

    v << resumen("Form_RVC_WIN", "gd_menu", "RESUMEN DE VENTAS - GANADORES", fuenteGanadores(), 1, 17);
    v << resumen("Form_RVC_TF", "diario_menu_tf", "RESUMEN DE VENTAS - TABLA FIJA", fuenteTablaFija(), 2, 19);
    v << resumen("Form_RVC_MC", "mc_rpt_diario", "RESUMEN DE VENTAS - MACUARE", fuenteMacuare(), 36, 37);
    v << resumen("Form_RVC_PT", "rvc_pt_menu", "RESUMEN DE VENTAS - PUESTOS", fuentePuestos(), 32, 33);
    v << resumen("Form_RVC_TD", "rvc_td_menu", "RESUMEN DE VENTAS - TABLA DINAMICA", fuenteDinamicas(), 30, 31);
    d = resumen("Form_RVTF_SubGrupos", "resgrupos_menu", "TABLA FIJA POR SUBGRUPOS", fuenteTablaFija(), 28, 27);
    d.grupos = false;
    v << d;

    for (const bool tablaFija : {false, true}) {
        d = ventana(tablaFija ? "Form_Bitacora_TF" : "Form_Bitacora_Ganadores", tablaFija ? "bit_tf_menu" : "bt_menu",
                    tablaFija ? "BITÁCORA DE TICKETS - TABLA FIJA" : "BITÁCORA DE TICKETS - GANADORES", "rpt_bitacora",
                    [tablaFija](Context& ctx, const Consulta& c) { return filasBitacora(ctx, tablaFija, c); },
                    siempre(tablaFija ? 22 : 16));
        d.rango = true;
        d.subgrupos = true;
        d.opcion = QStringLiteral("SOLO ANULADOS");
        v << d;
    }

    const auto taquillas = [](const FuenteJuego& j) {
        return [&j](Context& ctx, const Consulta& c) { return filasTaquillas(ctx, j, c); };
    };
    d = ventana("Form_RPt_TaqS", "rst_menu", "RESUMEN SEMANAL POR TAQUILLA", "rpt_resultadostaqs", taquillas(fuenteGanadores()),
                siempre(40));
    d.rango = true;
    // "Parametro1": the range; "Parametro2": the week of the year it starts in.
    d.parametros = [](const Consulta& c) {
        return ParametrosReporte{QStringLiteral("DEL %1 AL %2").arg(fechaVista(c.desde), fechaVista(c.hasta)),
                                 desdeFechaSql(c.desde).weekNumber()};
    };
    v << d;
    v << ventana("Form_RPT_CuadreTaqTF", "tf_porTaquilla", "CUADRE POR TAQUILLA - TABLA FIJA", "rpt_resultadostaqs",
                 taquillas(fuenteTablaFija()), siempre(20));
    return v;
}

}  // namespace

const QVector<DescripcionReporte>& ventanasReporte() {
    static const QVector<DescripcionReporte> v = construir();
    return v;
}

const DescripcionReporte* ventanaReporte(const QString& nombre) {
    for (const DescripcionReporte& d : ventanasReporte())
        if (d.nombre == nombre) return &d;
    return nullptr;
}

QVector<Alcance> GeneradorReporte::alcances() const {
    if (!d_.grupos && !d_.subgrupos) return {};
    return alcancesPermitidos(ctx_, d_.grupos, d_.subgrupos);
}

std::optional<Consulta> GeneradorReporte::revisar(const Peticion& p) const {
    const auto negar = [&](const QString& texto) {
        ctx_.dialogs.refuse(kTituloVerificacion, texto);
        return std::nullopt;
    };
    const QDate hasta = d_.rango ? p.hasta : p.desde;
    if (!p.desde.isValid() || !hasta.isValid()) return negar(kSinFechas);
    if (p.desde > hasta) return negar(kFechasInvertidas);
    Consulta c;
    c.desde = fechaSql(p.desde);
    c.hasta = fechaSql(hasta);
    if (d_.carreras) {
        const auto desde = leerEntero(p.carreraDesde, 999), hasta = leerEntero(p.carreraHasta, 999);
        if (!desde || !hasta || *desde < 1 || *desde > *hasta) return negar(kRangoCarreras);
        c.carreraDesde = *desde;
        c.carreraHasta = *hasta;
    }
    if (d_.grupos || d_.subgrupos) {
        if (!alcances().contains(p.alcance))
            return negar(p.alcance.tipo == Alcance::Tipo::Subgrupo ? kSubgrupoNoValido : texto::DebeSeleccionarGrupo);
        c.alcance = p.alcance;
    }
    c.opcion = p.opcion;
    return c;
}

std::optional<GeneradorReporte::Apertura> GeneradorReporte::generar(const Peticion& p) {
    const std::optional<Consulta> c = revisar(p);
    if (!c) return std::nullopt;
    const Recordset filas = d_.llenar(ctx_, *c);
    Apertura a;
    a.filas = reescribir(ctx_.local(), d_.tabla, filas);
    if (filas.empty()) {
        ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
        return std::nullopt;
    }
    a.tipo = d_.tipo(*c);
    if (d_.parametros) a.parametros = d_.parametros(*c);
    return a;
}

bool GeneradorReporte::exportarTexto(const Peticion& p, const QString& archivo) {
    const std::optional<Consulta> c = revisar(p);
    if (!c || !generar(p)) return false;
    const Recordset filas = ctx_.local().query("SELECT * FROM rpt_general ORDER BY ch, fecha");
    // The voided tickets of each centre and day, counted by the server.
    Recordset anulados = ctx_.servidor().query(
        "SELECT g.ch, b.fecha, count(b.numero) AS cant_anulados FROM bitacora b, grupos g "
        "WHERE b.estatus = 5 AND b.fecha BETWEEN ? AND ? AND g.grupo = b.grupo GROUP BY g.ch, b.fecha",
        {c->desde, c->hasta});
    QFile f(archivo);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        ctx_.dialogs.refuse(d_.titulo, QStringLiteral("NO SE PUDO ESCRIBIR EL ARCHIVO ") + archivo);
        return false;
    }
    QTextStream out(&f);
    out.setEncoding(QStringConverter::Utf8);
    out << "FECHA;CENTRO;GANADORES;TABLA FIJA;REMATE;PUESTOS;DINAMICAS;ANULADOS\n";
    for (const Row& r : filas) {
        long long cantidad = 0;
        for (const Row& a : anulados)
            if (a.text("ch") == r.text("ch") && a.text("fecha") == r.text("fecha")) cantidad = a.integer("cant_anulados");
        QStringList campos{fechaVista(r.text("fecha")), r.text("ch")};
        for (const char* juego : {"ganadores", "tablafija", "remate", "puestos", "dinamicas"})
            campos << QString::number(r.number(juego), 'f', 2);
        campos << QString::number(cantidad);
        out << campos.join(QLatin1Char(';')) << '\n';
    }
    out.flush();
    return f.error() == QFile::NoError;
}

}  // namespace hipico
