#include "gui/Campos.h"

#include <QComboBox>
#include <QDateEdit>

namespace hipico {

QDateEdit* selectorFecha(const QString& nombre, QWidget* padre) {
    auto* f = new QDateEdit(padre);
    f->setObjectName(nombre);
    f->setDisplayFormat(QStringLiteral("dd-MM-yyyy"));
    f->setCalendarPopup(true);
    return f;
}

QComboBox* listaCarreras(const QString& nombre, QWidget* padre) {
    auto* c = new QComboBox(padre);
    c->setObjectName(nombre);
    for (int i = 1; i <= kCarrerasPorDia; ++i) c->addItem(QString::number(i));
    return c;
}

}  // namespace hipico
