#pragma once

#include <QString>

#include "core/FiltrosTecla.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QDateEdit;
class QWidget;

namespace hipico {

// The race numbers a day can have.
constexpr int kCarrerasPorDia = 15;

// A date picker as every window shows it: "dd-MM-yyyy", with its calendar.
QDateEdit* selectorFecha(const QString& nombre, QWidget* padre = nullptr);
// The list of the day's race numbers, 1 to kCarrerasPorDia.
QComboBox* listaCarreras(const QString& nombre, QWidget* padre = nullptr);

// A label of a style-sheet class ("campo": a field's name; "total": a figure).
QLabel* etiqueta(const QString& texto, const char* clase = "campo");

// A button that Enter presses when it has the cursor.
QPushButton* boton(const QString& texto, const QString& nombre, QWidget* padre = nullptr);

// A text box: its name, and when given the longest text it takes (0: no
// limit), a keystroke filter and its widest width in pixels (0: any).
QLineEdit* caja(const QString& nombre, QWidget* padre = nullptr, int largo = 0, FiltroTecla filtro = nullptr,
                int ancho = 0);

}  // namespace hipico
