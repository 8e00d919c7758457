#pragma once

#include <QString>
#include <QVariant>

class QWidget;

namespace hipico {

// The application's one style sheet (hipico.qss, kept as a resource).
QString hojaDeEstilo();
// Gives the running application its style sheet; every window takes its look
// from it.
void aplicarEstilo();
// Loads Qt's own Spanish translations, so the standard buttons and dialogs
// ("Aceptar", "Cancelar", "Sí", "No", the calendar, a text box's menu) speak
// Spanish. False when the translations are not installed.
bool cargarTraducciones();
// Sets a property the style sheet reads (QLabel[enLinea="true"]) and restyles
// the widget by its new value.
void marcar(QWidget* widget, const char* propiedad, const QVariant& valor);

}  // namespace hipico
