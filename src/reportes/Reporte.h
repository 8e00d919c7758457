#pragma once

#include "reportes/Documento.h"

#include <QString>
#include <optional>

namespace hipico {

class Context;

// The two values a caller hands to a report window before it opens:
// "Parametro1" (text) and "Parametro2" (a 32-bit whole number).
struct ParametrosReporte {
    QString parametro1;
    qint32 parametro2 = 0;
};

// What a report window opens: its caption, its template and, when the window
// hands them over, the parameters.
struct SolicitudReporte {
    QString titulo;
    QString plantilla;  // "\Reportes\..." as the kinds table writes it
    std::optional<ParametrosReporte> parametros;
};

// The general report window (RPT_Diario_WIN): the kind's caption and
// template; the parameters go over only for the kinds that take them (40).
// nullopt for a kind outside 1..40.
std::optional<SolicitudReporte> solicitudGeneral(int tipo, const ParametrosReporte& parametros = {});
// The ticket report window: kinds 1 and 2 only, always with both parameters.
std::optional<SolicitudReporte> solicitudBoletos(int tipo, const ParametrosReporte& parametros);

// Reads the template, hands over the parameters, reads the template's table
// of the local report schema as it was last filled, and lays the report out.
// A template missing, malformed or naming a field its table does not have
// throws ErrorPlantilla; a database failure throws DbError.
Documento prepararReporte(Context& ctx, const SolicitudReporte& solicitud);

}  // namespace hipico
