#include "reportes/Lanzador.h"

#include "core/Context.h"
#include "core/Guardia.h"
#include "reportes/RPT_Diario_WIN.h"

#include <QApplication>
#include <memory>

namespace hipico {

namespace {

// The hourglass while the report opens.
struct RelojDeArena {
    RelojDeArena() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~RelojDeArena() { QApplication::restoreOverrideCursor(); }
};

QWidget* crear(Context& ctx, const QString& ventana, const std::optional<SolicitudReporte>& solicitud, QWidget* padre) {
    if (!solicitud) return nullptr;
    RelojDeArena reloj;
    std::shared_ptr<const Documento> documento;
    proteger(ctx, ventana, [&] {
        try {
            documento = std::make_shared<const Documento>(prepararReporte(ctx, *solicitud));
        } catch (const ErrorPlantilla& e) {
            ctx.dialogs.refuse(kTituloPlantilla, e.texto());
        }
    });
    if (!documento) return nullptr;
    return new RPT_Diario_WIN(ctx, ventana, solicitud->titulo, documento, padre);
}

QWidget* mostrar(QWidget* ventana) {
    if (ventana) ventana->show();
    return ventana;
}

}  // namespace

QWidget* crearReporte(Context& ctx, int tipo, const ParametrosReporte& parametros, QWidget* padre) {
    return crear(ctx, QStringLiteral("RPT_Diario_WIN"), solicitudGeneral(tipo, parametros), padre);
}

QWidget* abrirReporte(Context& ctx, int tipo, const ParametrosReporte& parametros, QWidget* padre) {
    return mostrar(crearReporte(ctx, tipo, parametros, padre));
}

QWidget* abrirReporteBoletos(Context& ctx, int tipo, const ParametrosReporte& parametros, QWidget* padre) {
    return mostrar(crear(ctx, QStringLiteral("RPT_Jugadas_WIN"), solicitudBoletos(tipo, parametros), padre));
}

}  // namespace hipico
