#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace hipico {

// Keystroke filters: take the code of the key just typed and return the code
// to let through, or 0 to swallow the key. Codes are Windows-1252.
int SoloNumeros(int codigo);
int SoloNumerosComaGuion(int codigo);
int SoloNumerosComa(int codigo);
int Mayusculas(int codigo);
int SoloAlfanumerico(int codigo);

using FiltroTecla = int (*)(int);

// Applies a keystroke filter to a text box: swallowed keys never reach it and
// changed keys (upper case) are typed in their changed form. Keys that type
// no character (arrows, Tab, Delete) pass untouched.
class KeyFilter : public QObject {
    Q_OBJECT
public:
    KeyFilter(FiltroTecla filtro, QObject* parent);
    static KeyFilter* install(QWidget* caja, FiltroTecla filtro);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FiltroTecla filtro_;
};

// Enter (Return or the keypad's Enter) moves the focus to the next field of
// the window, unless the field has something of its own to do with it:
// onEnter returns true when it handled the key.
class EnterMovesOn : public QObject {
    Q_OBJECT
public:
    explicit EnterMovesOn(QWidget* campo, std::function<bool()> onEnter = {});
    static EnterMovesOn* install(QWidget* campo, std::function<bool()> onEnter = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool()> onEnter_;
};

}  // namespace hipico
