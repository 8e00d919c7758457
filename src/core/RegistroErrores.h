#pragma once

#include <QString>

namespace hipico {

class Context;
class DbError;

// The administrator's log of failures: the driver's text and the statement,
// with the date, the user and the window, one entry per failure. Users never
// see the driver's text; the log is where it goes.

// The log file: "hipico-errores.log" in the configured local folder (else
// this user's data folder of hipico). HIPICO_LOG overrides it.
QString archivoRegistro(const Context& ctx);
// Appends one entry. Never throws: a log that cannot be written is skipped.
void registrarError(const Context& ctx, const QString& ventana, const QString& detalle);
void registrarError(const Context& ctx, const QString& ventana, const DbError& error);

}  // namespace hipico
