#include "gui/Grilla.h"

#include "gui/RecordsetModel.h"

#include <QHeaderView>
#include <QTableView>

namespace hipico {

namespace {
constexpr int kAltoFila = 22;
}

void prepararGrilla(QTableView* grilla, const QString& nombre, AnchoColumnas ancho) {
    grilla->setObjectName(nombre);
    grilla->setSelectionBehavior(QAbstractItemView::SelectRows);
    grilla->setSelectionMode(QAbstractItemView::SingleSelection);
    grilla->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grilla->verticalHeader()->hide();
    grilla->verticalHeader()->setDefaultSectionSize(kAltoFila);
    if (ancho == AnchoColumnas::Repartido)
        grilla->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    else
        grilla->horizontalHeader()->setStretchLastSection(true);
}

QTableView* grillaDe(RecordsetModel* modelo, const QString& nombre, QWidget* padre) {
    auto* grilla = new QTableView(padre);
    grilla->setModel(modelo);
    prepararGrilla(grilla, nombre);
    return grilla;
}

}  // namespace hipico
