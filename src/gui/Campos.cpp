#include "gui/Campos.h"

#include <QComboBox>
#include "gui/Teclado.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

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

QLabel* etiqueta(const QString& texto, const char* clase) {
    auto* l = new QLabel(texto);
    l->setProperty("class", clase);
    return l;
}

QPushButton* boton(const QString& texto, const QString& nombre, QWidget* padre) {
    auto* b = new QPushButton(texto, padre);
    b->setObjectName(nombre);
    b->setAutoDefault(true);
    return b;
}

QLineEdit* caja(const QString& nombre, QWidget* padre, int largo, FiltroTecla filtro, int ancho) {
    auto* e = new QLineEdit(padre);
    e->setObjectName(nombre);
    if (largo > 0) e->setMaxLength(largo);
    if (filtro) KeyFilter::install(e, filtro);
    if (ancho > 0) e->setMaximumWidth(ancho);
    return e;
}

}  // namespace hipico
