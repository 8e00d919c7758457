#include "gui/Teclado.h"

#include "core/Cipher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

namespace hipico {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

bool esEnter(const QKeyEvent* key) { return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter; }

}  // namespace

KeyFilter::KeyFilter(FiltroTecla filtro, QObject* parent) : QObject(parent), filtro_(filtro) {}

KeyFilter* KeyFilter::install(QWidget* caja, FiltroTecla filtro) {
    auto* f = new KeyFilter(filtro, caja);
    caja->installEventFilter(f);
    return f;
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    int codigo = 0;
    if (key->key() == Qt::Key_Backspace)
        codigo = kBackspace;
    else if (esEnter(key))
        codigo = kEnter;
    else if (key->text().size() == 1 && key->text().at(0).category() != QChar::Other_Control &&
             !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        codigo = codigoAnsi(key->text().at(0));
    else
        return false;  // keys that type nothing are not the filter's business
    const int resultado = filtro_(codigo);
    if (resultado == 0) return true;
    if (resultado == codigo) return false;
    // The filter changed the character: type the changed one instead.
    const QString texto(caracterAnsi(resultado));
    if (auto* line = qobject_cast<QLineEdit*>(watched)) {
        line->insert(texto);
        return true;
    }
    QKeyEvent cambiado(QEvent::KeyPress, key->key(), key->modifiers(), texto, key->isAutoRepeat(), key->count());
    return QObject::eventFilter(watched, &cambiado);
}

EnterMovesOn::EnterMovesOn(QWidget* campo, std::function<bool()> onEnter)
    : QObject(campo), onEnter_(std::move(onEnter)) {}

EnterMovesOn* EnterMovesOn::install(QWidget* campo, std::function<bool()> onEnter) {
    auto* f = new EnterMovesOn(campo, std::move(onEnter));
    campo->installEventFilter(f);
    return f;
}

bool EnterMovesOn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (!esEnter(key)) return false;
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier)) return false;
    if (onEnter_ && onEnter_()) return true;
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w) return false;
    QWidget* next = w->nextInFocusChain();
    while (next && next != w && (!next->isEnabled() || !next->isVisible() || !(next->focusPolicy() & Qt::TabFocus)))
        next = next->nextInFocusChain();
    if (next && next != w) next->setFocus(Qt::TabFocusReason);
    return true;
}

LectorCodigos::LectorCodigos(QWidget* ventana, int minimo, std::function<void(const QString&)> leido)
    : QObject(ventana), ventana_(ventana), minimo_(minimo), leido_(std::move(leido)) {
    reloj_.start();
    qApp->installEventFilter(this);
}

LectorCodigos::~LectorCodigos() { qApp->removeEventFilter(this); }

void LectorCodigos::excluir(QWidget* caja) { excluidas_ << caja; }

void LectorCodigos::olvidar() {
    rafaga_.clear();
    caja_ = nullptr;
    antes_.clear();
}

bool LectorCodigos::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    // The key as it reaches the box with the cursor (not again as it travels up).
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w || w != QApplication::focusWidget() || !(w == ventana_ || ventana_->isAncestorOf(w))) return false;
    if (excluidas_.contains(w)) {
        olvidar();
        return false;
    }
    auto* key = static_cast<QKeyEvent*>(event);
    const qint64 ahora = reloj_.elapsed();
    const bool seguida = ahora - ultima_ <= kEntreTeclasMs;
    const QString t = key->text();
    if (t.size() == 1 && t.at(0) >= QLatin1Char('0') && t.at(0) <= QLatin1Char('9') &&
        !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        if (rafaga_.isEmpty() || !seguida || w != caja_) {
            olvidar();
            caja_ = w;
            if (auto* line = qobject_cast<QLineEdit*>(w)) antes_ = line->text();
        }
        rafaga_ += t;
        ultima_ = ahora;
        return false;
    }
    if (esEnter(key) && seguida && rafaga_.size() >= minimo_ && w == caja_) {
        const QString codigo = rafaga_;
        if (auto* line = qobject_cast<QLineEdit*>(w)) line->setText(antes_);
        olvidar();
        leido_(codigo);
        return true;
    }
    olvidar();
    return false;
}

void enterVaA(QWidget* campo, QWidget* siguiente) {
    EnterMovesOn::install(campo, [siguiente] {
        siguiente->setFocus(Qt::TabFocusReason);
        return true;
    });
}

void enterEjecuta(QWidget* campo, std::function<void()> accion) {
    EnterMovesOn::install(campo, [accion = std::move(accion)] {
        accion();
        return true;
    });
}

void enterPulsa(QAbstractButton* boton) {
    enterEjecuta(boton, [boton] { boton->click(); });
}

void ordenTabulacion(std::initializer_list<QWidget*> campos) {
    QWidget* anterior = nullptr;
    for (QWidget* w : campos) {
        if (anterior) QWidget::setTabOrder(anterior, w);
        anterior = w;
    }
}

}  // namespace hipico
