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

DescripcionReporte resumen(const QString& nombre, const QString& entrada, const QString& titulo, const FuenteJuego& j,
                           int dia, int rango) {
    DescripcionReporte d;
    d.nombre = nombre;
    d.entrada = entrada;
    d.titulo = titulo;
    d.rango = true;
    d.subgrupos = true;
    d.tabla = "rpt_diario";
    d.llenar = [&j](Context& ctx, const Consulta& c) { return filasDiario(ctx, j, c); };
    d.tipo = diaORango(dia, rango);
    return d;
}

QVector<DescripcionReporte> construir() {
    QVector<DescripcionReporte> v;

    DescripcionReporte d;
    d.nombre = "Form_ResultadosCarreras_WIN";
    d.entrada = "rc_admin_menu";
    d.titulo = "RESULTADOS DE CARRERAS - GANADORES";
    d.carreras = true;
    d.subgrupos = true;
    d.tabla = "rpt_resultadoscarreras";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasResultados(ctx, fuenteGanadores(), c); };
    // By subgroup the races are shown per centre.
    d.tipo = [](const Consulta& c) { return c.alcance.tipo == Alcance::Tipo::Subgrupo ? 7 : 34; };
    v << d;

    d = {};
    d.nombre = "Form_ResultadosCarreras_TF";
    d.entrada = "rctf_admin_menu";
    d.titulo = "RESULTADOS DE CARRERAS - TABLA FIJA";
    d.tabla = "rpt_resultadoscarreras";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasResultados(ctx, fuenteTablaFija(), c); };
    d.tipo = siempre(21);
    v << d;

    d = {};
    d.nombre = "Form_Rpt_Dividendos";
    d.entrada = "dd_admin_menu";
    d.titulo = "DIVIDENDOS DEL DÍA";
    d.grupos = false;
    d.tabla = "rpt_dividendos";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasDividendos(ctx, c); };
    d.tipo = siempre(5);
    v << d;

    d = resumen("Form_GanTF", "cuadre_gantf_menu", "GANANCIA - TABLA FIJA", fuenteTablaFija(), 28, 27);
    d.subgrupos = false;
    v << d;

    d = {};
    d.nombre = "Form_ReporteGeneral";
    d.entrada = "rpt_gen_admin_menu";
    d.titulo = "REPORTE GENERAL";
    d.rango = true;
    d.subgrupos = true;
    d.exportaTexto = true;
    d.tabla = "rpt_general";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasGeneral(ctx, c, false); };
    d.tipo = siempre(29);
    v << d;

    d.nombre = "Form_ReporteGeneralC";
    d.entrada = "gpc_rptgeneral";
    d.titulo = "REPORTE GENERAL POR CARRERAS";
    d.rango = false;
    d.carreras = true;
    d.llenar = [](Context& ctx, const Consulta& c) { return filasGeneral(ctx, c, true); };
    v << d;

    v << resumen("Form_RVC_WIN", "gd_menu", "RESUMEN DE VENTAS - GANADORES", fuenteGanadores(), 1, 17);
    v << resumen("Form_RVC_TF", "diario_menu_tf", "RESUMEN DE VENTAS - TABLA FIJA", fuenteTablaFija(), 2, 19);
    v << resumen("Form_RVC_MC", "mc_rpt_diario", "RESUMEN DE VENTAS - MACUARE", fuenteMacuare(), 36, 37);
    v << resumen("Form_RVC_PT", "rvc_pt_menu", "RESUMEN DE VENTAS - PUESTOS", fuentePuestos(), 32, 33);
    v << resumen("Form_RVC_TD", "rvc_td_menu", "RESUMEN DE VENTAS - TABLA DINAMICA", fuenteDinamicas(), 30, 31);
    d = resumen("Form_RVTF_SubGrupos", "resgrupos_menu", "TABLA FIJA POR SUBGRUPOS", fuenteTablaFija(), 28, 27);
    d.grupos = false;
    v << d;

    d = {};
    d.nombre = "Form_Bitacora_Ganadores";
    d.entrada = "bt_menu";
    d.titulo = "BITÁCORA DE TICKETS - GANADORES";
    d.rango = true;
    d.subgrupos = true;
    d.opcion = "SOLO ANULADOS";
    d.tabla = "rpt_bitacora";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasBitacora(ctx, false, c); };
    d.tipo = siempre(16);
    v << d;

    d.nombre = "Form_Bitacora_TF";
    d.entrada = "bit_tf_menu";
    d.titulo = "BITÁCORA DE TICKETS - TABLA FIJA";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasBitacora(ctx, true, c); };
    d.tipo = siempre(22);
    v << d;

    d = {};
    d.nombre = "Form_RPt_TaqS";
    d.entrada = "rst_menu";
    d.titulo = "RESUMEN SEMANAL POR TAQUILLA";
    d.rango = true;
    d.tabla = "rpt_resultadostaqs";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasTaquillas(ctx, fuenteGanadores(), c); };
    d.tipo = siempre(40);
    // "Parametro1": the range; "Parametro2": the week of the year it starts in.
    d.parametros = [](const Consulta& c) {
        return ParametrosReporte{QStringLiteral("DEL %1 AL %2").arg(fechaVista(c.desde), fechaVista(c.hasta)),
                                 desdeFechaSql(c.desde).weekNumber()};
    };
    v << d;

    d = {};
    d.nombre = "Form_RPT_CuadreTaqTF";
    d.entrada = "tf_porTaquilla";
    d.titulo = "CUADRE POR TAQUILLA - TABLA FIJA";
    d.tabla = "rpt_resultadostaqs";
    d.llenar = [](Context& ctx, const Consulta& c) { return filasTaquillas(ctx, fuenteTablaFija(), c); };
    d.tipo = siempre(20);
    v << d;
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
    const std::vector<Insercion> filas = d_.llenar(ctx_, *c);
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
