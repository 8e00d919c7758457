#pragma once

#include "core/FiltrosTecla.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <initializer_list>

class QAbstractButton;
class QWidget;

namespace hipico {

// Applies a keystroke filter to a text box: swallowed keys never reach it and
// changed keys (upper case) are typed in their changed form. Keys that type
// no character (arrows, Tab, Delete, Esc) pass untouched.
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

// A code read by a scanner: a burst of digits, each close behind the other,
// ended by Enter. Anywhere in the window (but in the boxes kept out), such a
// burst of at least `minimo` digits is taken back from the box it fell into,
// which keeps the text it had, and handed to `leido`; its Enter does nothing
// else. Keys typed by hand never come that close together.
class LectorCodigos : public QObject {
    Q_OBJECT
public:
    LectorCodigos(QWidget* ventana, int minimo, std::function<void(const QString&)> leido);
    ~LectorCodigos() override;
    // A box whose keys are never a scanner's (a password).
    void excluir(QWidget* caja);

    // The longest pause between two keys of one burst.
    static constexpr int kEntreTeclasMs = 40;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void olvidar();

    QWidget* ventana_;
    int minimo_;
    std::function<void(const QString&)> leido_;
    QList<QWidget*> excluidas_;
    QString rafaga_;
    QWidget* caja_ = nullptr;
    QString antes_;
    qint64 ultima_ = 0;
    QElapsedTimer reloj_;
};

// Enter in a field takes the focus to the given field.
void enterVaA(QWidget* campo, QWidget* siguiente);
// Enter in a field runs the window's action instead of moving on.
void enterEjecuta(QWidget* campo, std::function<void()> accion);
// Enter on a button presses it (Space already does).
void enterPulsa(QAbstractButton* boton);
// Tab (and Enter where it moves on by itself) follows the fields in this order.
void ordenTabulacion(std::initializer_list<QWidget*> campos);

}  // namespace hipico
