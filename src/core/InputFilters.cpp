#include "core/InputFilters.h"

#include "core/Cipher.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>

namespace hipico {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

int dejarPasar(int codigo, const char* permitidos) {
    if (codigo == kBackspace || codigo == kEnter) return codigo;
    for (const char* p = permitidos; *p; ++p)
        if (codigo == static_cast<unsigned char>(*p)) return codigo;
    return 0;
}

int mayuscula(int codigo) {
    if (codigo < 0 || codigo > 255) return codigo;
    return codigoAnsi(caracterAnsi(codigo).toUpper());
}

}  // namespace

int SoloNumeros(int codigo) { return dejarPasar(codigo, "0123456789"); }
int SoloNumerosComaGuion(int codigo) { return dejarPasar(codigo, "0123456789,-"); }
int SoloNumerosComa(int codigo) { return dejarPasar(codigo, "0123456789,"); }
int Mayusculas(int codigo) { return mayuscula(codigo); }

int SoloAlfanumerico(int codigo) {
    if ((codigo >= 33 && codigo <= 47) || (codigo >= 58 && codigo <= 64) || (codigo >= 91 && codigo <= 95) ||
        (codigo >= 123 && codigo <= 163) || (codigo >= 166 && codigo <= 254))
        return 0;
    return mayuscula(codigo);
}

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
    if (key->key() == Qt::Key_Backspace) codigo = kBackspace;
    else if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) codigo = kEnter;
    else if (key->text().size() == 1 && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
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
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return false;
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

}  // namespace hipico
