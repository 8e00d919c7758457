#pragma once

#include "core/Db.h"

#include <QString>
#include <optional>
#include <type_traits>

namespace hipico {

class Context;

// The one error path of the program. Every command of a window runs through
// proteger (or intentar): a database failure is written to the
// administrator's log (driver text and statement) and reaches the user once,
// as one Spanish message; nothing is swallowed and nothing raw is shown.

inline const QString kTituloErrorBD = QStringLiteral("ERROR DE BASE DE DATOS");
inline const QString kMensajeErrorBD =
    QStringLiteral("NO SE PUDO COMPLETAR LA OPERACION. INTENTE DE NUEVO Y, SI EL PROBLEMA CONTINUA, AVISE AL "
                   "ADMINISTRADOR");

// Logs the failure and shows its message: a lost connection gets the
// connection message, any other failure the database message.
void avisarFallo(Context& ctx, const QString& ventana, const DbError& error);

// Runs fn (returning void or something testable as bool). Returns false when
// fn returned false or a database failure stopped it.
template <class F>
bool proteger(Context& ctx, const QString& ventana, F&& fn) {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<F>>) {
            fn();
            return true;
        } else {
            return static_cast<bool>(fn());
        }
    } catch (const DbError& e) {
        avisarFallo(ctx, ventana, e);
        return false;
    }
}

// Runs fn and gives its value; nullopt when a database failure stopped it.
template <class F>
auto intentar(Context& ctx, const QString& ventana, F&& fn) -> std::optional<std::invoke_result_t<F>> {
    try {
        return fn();
    } catch (const DbError& e) {
        avisarFallo(ctx, ventana, e);
        return std::nullopt;
    }
}

}  // namespace hipico
