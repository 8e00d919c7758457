#pragma once

#include <QString>

class QComboBox;
class QDateEdit;
class QWidget;

namespace hipico {

// The race numbers a day can have.
constexpr int kCarrerasPorDia = 15;

// A date picker as every window shows it: "dd-MM-yyyy", with its calendar.
QDateEdit* selectorFecha(const QString& nombre, QWidget* padre = nullptr);
// The list of the day's race numbers, 1 to kCarrerasPorDia.
QComboBox* listaCarreras(const QString& nombre, QWidget* padre = nullptr);

}  // namespace hipico
