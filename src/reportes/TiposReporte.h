#pragma once

#include <QString>
#include <QVector>

namespace hipico {

struct Config;

// One kind of report: the caption of its window and the template it opens,
// a path under the program's folder written as the system writes it
// ("\Reportes\Ganadores\diario.rpt").
struct TipoReporte {
    int tipo = 0;
    QString titulo;
    QString plantilla;
    bool parametros = false;  // the general window hands "Parametro1" and "Parametro2" over
};

// The kinds of the general report window, 1 to 40, in order.
const QVector<TipoReporte>& tiposReporte();
// The kind of that number (nullptr outside 1..40).
const TipoReporte* tipoReporte(int tipo);

// The ticket report window: kind 1 opens the winner tickets' template, kind 2
// the fixed-table tickets'; any other kind opens nothing ("").
QString plantillaBoletos(int tipo);

// The file of a template path: under the folder of `[reportes] carpeta` when
// set, else under the program's own folder, else (a program run from its
// build tree, the tests) under the source tree's Reportes.
QString archivoPlantilla(const Config& config, const QString& plantilla);

}  // namespace hipico
