#include "gui/Formulario.h"

#include "gui/Estilo.h"
#include "gui/Teclado.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>

namespace hipico {

namespace {

using T = Campo::Tipo;

QWidget* widgetDe(const Campo& c) {
    switch (c.tipo) {
    case T::Interruptor: return new QCheckBox;
    case T::Opcion:
    case T::Lista: {
        auto* lista = new QComboBox;
        lista->addItems(c.opciones);
        return lista;
    }
    default: {
        auto* caja = new QLineEdit;
        // A text longer than its column is refused by name, so the box takes one more
        // character than fits: the user is told instead of being stopped silently.
        if (c.tipo == T::Texto || c.tipo == T::Clave) caja->setMaxLength(c.largo + 1);
        if (c.tipo == T::Clave) caja->setEchoMode(QLineEdit::Password);
        if (c.tipo == T::Fecha) {
            caja->setPlaceholderText(QStringLiteral("DD-MM-AAAA"));
            caja->setMaxLength(10);
        }
        return caja;
    }
    }
}

}  // namespace

FormularioCampos::FormularioCampos(const QVector<Campo>& campos, QTabWidget* pestanasWidget, int columnas)
    : QObject(pestanasWidget), lista_(campos) {
    columnas = std::max(1, columnas);
    for (const QString& pestana : pestanas(campos)) {
        auto* hoja = new QWidget;
        auto* fila = new QHBoxLayout(hoja);
        QVector<QFormLayout*> formas;
        for (int i = 0; i < columnas; ++i) {
            auto* forma = new QFormLayout;
            forma->setLabelAlignment(Qt::AlignRight);
            fila->addLayout(forma, 1);
            formas << forma;
        }
        QVector<const Campo*> deLaPestana;
        for (const Campo& c : campos)
            if (c.pestana == pestana) deLaPestana << &c;
        // Down the first column, then the next.
        const int porColumna = (int(deLaPestana.size()) + columnas - 1) / columnas;
        for (int i = 0; i < deLaPestana.size(); ++i) {
            const Campo& c = *deLaPestana[i];
            QWidget* w = widgetDe(c);
            w->setObjectName(c.columna);
            if (c.requerido) marcar(w, "requerido", true);
            EnterMovesOn::install(w);
            formas[i / std::max(1, porColumna)]->addRow(c.etiqueta, w);
            campos_.insert(c.columna, w);
            if (!primero_) primero_ = w;
        }
        auto* desliza = new QScrollArea;
        desliza->setWidget(hoja);
        desliza->setWidgetResizable(true);
        pestanasWidget->addTab(desliza, pestana);
    }
}

void FormularioCampos::poner(const ValoresCampos& valores) {
    for (const Campo& c : lista_) {
        QWidget* w = campos_.value(c.columna);
        const QString v = valores.value(c.columna);
        if (auto* s = qobject_cast<QCheckBox*>(w)) {
            s->setChecked(v == QLatin1String("1"));
        } else if (auto* l = qobject_cast<QComboBox*>(w)) {
            if (c.tipo == T::Opcion) {
                l->setCurrentIndex(v.toInt());
                continue;
            }
            // A stored value the list does not offer is shown as it is.
            if (l->findText(v) < 0) l->addItem(v);
            l->setCurrentIndex(l->findText(v));
        } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
            e->setText(v);
            e->setCursorPosition(0);
        }
    }
}

ValoresCampos FormularioCampos::valores() const {
    ValoresCampos out;
    for (const Campo& c : lista_) {
        QWidget* w = campos_.value(c.columna);
        if (auto* s = qobject_cast<QCheckBox*>(w)) out[c.columna] = s->isChecked() ? "1" : "0";
        else if (auto* l = qobject_cast<QComboBox*>(w))
            out[c.columna] = c.tipo == T::Opcion ? QString::number(l->currentIndex()) : l->currentText();
        else if (auto* e = qobject_cast<QLineEdit*>(w)) out[c.columna] = e->text();
    }
    return out;
}

void FormularioCampos::limpiar() {
    for (QWidget* w : std::as_const(campos_)) {
        if (auto* s = qobject_cast<QCheckBox*>(w)) s->setChecked(false);
        else if (auto* l = qobject_cast<QComboBox*>(w)) l->setCurrentIndex(l->count() > 0 ? 0 : -1);
        else if (auto* e = qobject_cast<QLineEdit*>(w)) e->clear();
    }
}

void FormularioCampos::ponerOpciones(const QString& columna, const QStringList& opciones) {
    auto* l = qobject_cast<QComboBox*>(campos_.value(columna));
    if (!l) return;
    const QString actual = l->currentText();
    l->clear();
    l->addItems(opciones);
    // The value shown stays, even one the list no longer offers.
    if (!actual.isEmpty() && l->findText(actual) < 0) l->addItem(actual);
    l->setCurrentIndex(actual.isEmpty() ? (l->count() > 0 ? 0 : -1) : l->findText(actual));
}

void FormularioCampos::bloquear(bool bloqueado, const QStringList& salvo) {
    for (auto it = campos_.cbegin(); it != campos_.cend(); ++it)
        if (!salvo.contains(it.key())) it.value()->setEnabled(!bloqueado);
}

void FormularioCampos::bloquearCampo(const QString& columna, bool bloqueado) {
    if (QWidget* w = campos_.value(columna)) w->setEnabled(!bloqueado);
}

}  // namespace hipico
