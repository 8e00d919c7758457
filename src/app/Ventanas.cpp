#include "app/Ventanas.h"

#include "admin/Form_Admin_Win.h"
#include "core/WindowRegistry.h"

namespace hipico {

void registrarVentanas(WindowRegistry& registro) {
    // One line per window: registro.add("entrada_menu", [](Context& ctx, QWidget* menu) { ... });
    registro.add("cg_menu", [](Context& ctx, QWidget* menu) { return new Form_Admin_Win(ctx, menu); });
}

}  // namespace hipico
