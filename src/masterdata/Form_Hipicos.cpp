#include "masterdata/Form_Hipicos.h"

namespace hipico {

Form_Hipicos::Form_Hipicos(Context& ctx, QWidget* parent)
    : VentanaMaestra(ctx, parent, std::make_unique<Hipicos>(ctx)) {
    agregarComando(QStringLiteral("&Transferir Centros"), QStringLiteral("Boton_Transferir"),
                   [this] { return logica().transferir(); });
}

}  // namespace hipico
