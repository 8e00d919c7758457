#pragma once

class QWidget;

namespace hipico {

// Moves a window horizontally to the middle of its screen; its top stays.
void CentrarForm(QWidget* form);
// Keeps a child window inside its parent's area (moved, never resized past it).
void MantenerDentro(QWidget* hijo, const QWidget* padre);

}  // namespace hipico
