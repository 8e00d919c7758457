#pragma once

#include <QString>

class QWidget;

namespace hipico {

// Moves a window horizontally to the middle of its screen; its top stays.
void CentrarForm(QWidget* form);
// Keeps a child window inside its parent's area (moved, never resized past it).
void MantenerDentro(QWidget* hijo, const QWidget* padre);
// Makes the named printer the default printer of this user (CUPS). Returns
// false when the printing system refuses it.
bool ImpresoraPredeterminada(const QString& nombre);
// The name of the system's default printer ("" when there is none).
QString impresoraPorDefecto();

}  // namespace hipico
