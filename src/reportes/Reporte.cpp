#include "reportes/Reporte.h"

#include "core/Context.h"
#include "reportes/TiposReporte.h"

namespace hipico {

std::optional<SolicitudReporte> solicitudGeneral(int tipo, const ParametrosReporte& parametros) {
    const TipoReporte* t = tipoReporte(tipo);
    if (!t) return std::nullopt;
    SolicitudReporte s{t->titulo, t->plantilla, std::nullopt};
    if (t->parametros) s.parametros = parametros;
    return s;
}

std::optional<SolicitudReporte> solicitudBoletos(int tipo, const ParametrosReporte& parametros) {
    const QString plantilla = plantillaBoletos(tipo);
    if (plantilla.isEmpty()) return std::nullopt;
    return SolicitudReporte{tipoReporte(tipo)->titulo, plantilla, parametros};
}

Documento prepararReporte(Context& ctx, const SolicitudReporte& solicitud) {
    Plantilla plantilla = leerPlantilla(archivoPlantilla(ctx.config, solicitud.plantilla));
    if (solicitud.parametros)
        entregarParametros(plantilla, solicitud.parametros->parametro1, solicitud.parametros->parametro2);

    // Every field the template names must be a column of its table.
    Db& local = ctx.local();
    const std::string tabla = std::string(1, '`').append(plantilla.tabla.toStdString()).append(1, '`');
    const Recordset vacia = local.query("SELECT * FROM " + tabla + " LIMIT 0");
    for (const QString& campo : plantilla.camposUsados())
        if (vacia.columns().indexOf(campo) < 0)
            throw ErrorPlantilla(QStringLiteral("LA PLANTILLA DEL REPORTE NO ES VALIDA:\n%1\n(la tabla %2 no tiene el campo %3)")
                                     .arg(plantilla.archivo, plantilla.tabla, campo));
    std::string sql = "SELECT * FROM " + tabla;
    if (!plantilla.orden.isEmpty()) {
        QStringList orden;
        for (const QString& o : plantilla.orden)
            orden << QLatin1Char('`') + o.section(QLatin1Char(' '), 0, 0) + QLatin1Char('`') + QLatin1Char(' ') +
                         o.section(QLatin1Char(' '), 1);
        sql += " ORDER BY " + orden.join(QLatin1Char(',')).toStdString();
    }
    Recordset filas = local.query(sql);

    Documento::Cabecera cabecera;
    cabecera.titulo = plantilla.titulo.isEmpty() ? solicitud.titulo.trimmed() : plantilla.titulo;
    cabecera.empresa = ctx.session.empresa;
    cabecera.impreso = ctx.clock.now().toString(QStringLiteral("dd-MM-yyyy hh:mm:ss"));
    return Documento(std::move(plantilla), std::move(filas), cabecera, ctx.session.enDolares());
}

}  // namespace hipico
