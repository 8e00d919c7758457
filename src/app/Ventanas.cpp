#include "app/Ventanas.h"

#include "core/WindowRegistry.h"

namespace hipico {

void registrarVentanas(WindowRegistry& registro) {
    // One line per window: registro.add("entrada_menu", [](Context& ctx, QWidget* menu) { ... });
    (void)registro;
}

}  // namespace hipico
