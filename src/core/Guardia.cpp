#include "core/Guardia.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/RegistroErrores.h"

namespace hipico {

void avisarFallo(Context& ctx, const QString& ventana, const DbError& e) {
    registrarError(ctx, ventana, e);
    if (e.isConnectionLost())
        ctx.dialogs.refuse(kTituloConexion, kMensajeConexion);
    else
        ctx.dialogs.refuse(kTituloErrorBD, kMensajeErrorBD);
}

}  // namespace hipico
