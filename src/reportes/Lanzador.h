#pragma once

#include "reportes/Reporte.h"

class QWidget;

namespace hipico {

class Context;

// How any window opens a report (every report of the program goes this way):
//
//   1. Refill the report's table of the local report schema (ctx.local()):
//      "DELETE from rpt_..." and its rows, e.g. with the fillers of
//      reportes/Llenados.h and reescribir(), or your own writer.
//   2. Open the report window on it:
//        abrirReporte(ctx, tipo, {"texto", numero}, this);        // kinds 1..40
//        abrirReporteBoletos(ctx, 1 or 2, {"texto", numero}, this); // ticket lists
//
// The window's caption is the kind's caption; it draws the kind's template
// (Reportes/..., see tiposReporte()) against the table as it was last filled,
// so a report opened without a fill shows the rows of the previous one. The
// general window hands the two parameters to the template only for the kinds
// that take them (40); the ticket window always does. The hourglass shows
// while it opens. A missing or malformed template is told in one Spanish
// message naming the file, a database failure through the error guard; then
// nothing opens and the call gives nullptr. Otherwise it gives the window,
// shown, which deletes itself when closed.
QWidget* abrirReporte(Context& ctx, int tipo, const ParametrosReporte& parametros = {}, QWidget* padre = nullptr);
QWidget* abrirReporteBoletos(Context& ctx, int tipo, const ParametrosReporte& parametros, QWidget* padre = nullptr);

// The general report window of a kind, built but not shown (the main menu
// shows the registered "imp_tfactual" window inside itself); nullptr as above.
QWidget* crearReporte(Context& ctx, int tipo, const ParametrosReporte& parametros = {}, QWidget* padre = nullptr);

}  // namespace hipico
