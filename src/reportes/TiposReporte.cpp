#include "reportes/TiposReporte.h"

#include "core/Config.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace hipico {

const QVector<TipoReporte>& tiposReporte() {
    static const QVector<TipoReporte> tipos = {
        {1, "REPORTE VENTA GANADORES", "\\Reportes\\Ganadores\\diario.rpt"},
        {2, "REPORTE VENTA TABLA FIJA", "\\Reportes\\TablaFija\\diario.rpt"},
        {3, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera.rpt"},
        {4, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\diario.rpt"},
        {5, "REPORTE DIVIDENDOS", "\\Reportes\\Ganadores\\dividendos.rpt"},
        {6, "REPORTE GENERAL", "\\Reportes\\Ganadores\\General.rpt"},
        {7, "REPORTE RESULTADOS CARRERAS", "\\Reportes\\Ganadores\\resultados_carreras.rpt"},
        {8, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera2.rpt"},
        {9, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB.rpt"},
        {10, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\diario_TB.rpt"},
        {11, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\General.rpt"},
        {12, "REPORTE FINAL - GANADORES", "\\Reportes\\Ganadores\\Ganadores.rpt"},
        {13, "REPORTE COMBINACIONES MACUARE", "\\Reportes\\Macuare\\rpt_macuare.rpt"},
        {14, "REPORTE DIARIO MACUARE", "\\Reportes\\Macuare\\Resumen_Diario.rpt"},
        {15, "REPORTE SEMANAL MACUARE", "\\Reportes\\Macuare\\Resumen_Semanal.rpt"},
        {16, "TICKETS - GANADORES", "\\Reportes\\Ganadores\\bitacora_ganadores.rpt"},
        {17, "REPORTE GENERAL - GANADORES", "\\Reportes\\Ganadores\\semanal.rpt"},
        {18, "RESUMEN VENTA TAQUILLAS - GANADORES", "\\Reportes\\Ganadores\\resultados_taq.rpt"},
        {19, "RESUMEN GENERAL - TABLA FIJA", "\\Reportes\\TablaFija\\semanal.rpt"},
        {20, "RESUMEN VENTA TAQUILLAS - TABLA FIJA", "\\Reportes\\TablaFija\\resultados_taq.rpt"},
        {21, "REPORTE RESULTADOS CARRERAS TABLA FIJA", "\\Reportes\\TablaFija\\resultados_carreras.rpt"},
        {22, "TICKETS - TABLA FIJA ", "\\Reportes\\TablaFija\\bitacora_tickets.rpt"},
        {23, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera5.rpt"},
        {24, "REPORTE POR CARRERA - TABLA FIJA", "\\Reportes\\TablaFija\\carrera.rpt"},
        {25, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB2.rpt"},
        {26, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB2_V2.rpt"},
        {27, "RESUMEN GANANCIA - TABLA FIJA", "\\Reportes\\TablaFija\\Todos_Por.rpt"},
        {28, "RESUMEN GANANCIA - TABLA FIJA", "\\Reportes\\TablaFija\\Todos_Por2.rpt"},
        {29, "REPORTE GENERAL VARIOS", "\\Reportes\\Ganadores\\Generalv.rpt"},
        {30, "REPORTE VENTA TABLA DINAMICA", "\\Reportes\\Dinamicas\\diario.rpt"},
        {31, "RESUMEN GENERAL - TABLA DINAMICA", "\\Reportes\\Dinamicas\\semanal.rpt"},
        {32, "REPORTE VENTA PUESTOS", "\\Reportes\\Puestos\\diario.rpt"},
        {33, "RESUMEN GENERAL - PUESTOS", "\\Reportes\\Puestos\\semanal.rpt"},
        {34, "REPORTE RESULTADOS CARRERAS", "\\Reportes\\Ganadores\\resultados_carrerast.rpt"},
        {35, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_3TB.rpt"},
        {36, "REPORTE VENTA MACUARE", "\\Reportes\\Macuare\\diario.rpt"},
        {37, "REPORTE VENTA MACUARE", "\\Reportes\\Macuare\\Semanal.rpt"},
        {38, "REPORTE VENTA SUBASTA", "\\Reportes\\Subasta\\General_Subasta.rpt"},
        {39, "REPORTE JUGADAS DEL CLIENTE", "\\Reportes\\Ganadores\\JugadasClientes.rpt"},
        {40, "REPORTE SEMANAL POR TAQUILLA", "\\Reportes\\Ganadores\\resultados_taqs.rpt", true},
    };
    return tipos;
}

const TipoReporte* tipoReporte(int tipo) {
    const auto& tipos = tiposReporte();
    return tipo >= 1 && tipo <= tipos.size() ? &tipos[tipo - 1] : nullptr;
}

QString plantillaBoletos(int tipo) {
    if (tipo == 1) return QStringLiteral("\\Reportes\\Ganadores\\Jugadas.rpt");
    if (tipo == 2) return QStringLiteral("\\Reportes\\TablaFija\\Jugadas.rpt");
    return {};
}

QString archivoPlantilla(const Config& config, const QString& plantilla) {
    QString relativa = plantilla;
    relativa.replace(QLatin1Char('\\'), QLatin1Char('/'));
    while (relativa.startsWith(QLatin1Char('/'))) relativa.remove(0, 1);
    // Below the configured folder the path goes on after "Reportes/".
    if (!config.carpetaReportes.isEmpty())
        return QDir(config.carpetaReportes).filePath(relativa.section(QLatin1Char('/'), 1));
    const QString junto = QDir(QCoreApplication::applicationDirPath()).filePath(relativa);
    const QString fuente = QDir(QStringLiteral(HIPICO_FUENTE)).filePath(relativa);
    return QFileInfo::exists(junto) || !QFileInfo::exists(fuente) ? junto : fuente;
}

}  // namespace hipico
