#include "app/Ventanas.h"

#include "core/WindowRegistry.h"
#include "sales/Form_ConfImpresion.h"
#include "sales/Form_RPT_CuadreTaqWIn.h"
#include "sales/Form_Venta_WIN.h"

namespace hipico {

void registrarVentanas(WindowRegistry& registro) {
    // One line per window: registro.add("entrada_menu", [](Context& ctx, QWidget* menu) { ... });
    registro.add("vg_menu", [](Context& ctx, QWidget* menu) { return new Form_Venta_WIN(ctx, menu); });
    registro.add("pimp_menu", [](Context& ctx, QWidget* menu) { return new Form_ConfImpresion(ctx, menu); });
    registro.add("CT_ADMIN_MENU", [](Context& ctx, QWidget* menu) { return new Form_RPT_CuadreTaqWIn(ctx, menu); });
}

}  // namespace hipico
