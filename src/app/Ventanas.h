#pragma once

namespace hipico {

class WindowRegistry;

// Registers every window the program has under its main-menu entry.
void registrarVentanas(WindowRegistry& registro);

}  // namespace hipico
