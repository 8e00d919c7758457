#pragma once

#include "core/Niveles.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace hipico {

// One entry of the main menu: its name, caption, the menu that holds it, the
// levels that see it, and the allow-list the entry re-checks when clicked
// (empty: none, the visibility is all).
struct EntradaMenu {
    QString nombre;
    QString titulo;
    QString menu;
    QStringList niveles;
    QStringList permitidos;
    QString boton;  // caption of its toolbar button ("" when it has none)
};

// The menus of the menu bar, in order.
const QStringList& menusPrincipales();
// Every entry, in menu order.
const QVector<EntradaMenu>& entradasMenu();
// The entry of that name (nullptr when there is none).
const EntradaMenu* buscarEntrada(const QString& nombre);

// The menu's own functions: they need no window of the registry.
bool esFuncionPropia(const QString& entrada);

// The auction boards the group's number of tables chooses between.
const QStringList& tablerosSubasta();

}  // namespace hipico
