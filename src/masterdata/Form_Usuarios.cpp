#include "masterdata/Form_Usuarios.h"

namespace hipico {

Form_Usuarios::Form_Usuarios(Context& ctx, QWidget* parent)
    : VentanaMaestra(ctx, parent, std::make_unique<Usuarios>(ctx)) {
    if (!logica().manejaCentros()) return;
    agregarComando(QStringLiteral("Dar de &Baja al Centro"), QStringLiteral("Boton_Desactivar"),
                   [this] { return logica().desactivarCentro(filtroActual()); });
    agregarComando(QStringLiteral("&Activar el Centro"), QStringLiteral("Boton_Activar"),
                   [this] { return logica().activarCentro(filtroActual()); });
    agregarComando(QStringLiteral("&Liberar Equipos"), QStringLiteral("Boton_Liberar"),
                   [this] { return logica().liberarEquipos(filtroActual()); });
}

}  // namespace hipico
