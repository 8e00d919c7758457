#pragma once

#include "core/Guardia.h"

#include <QDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QShowEvent>
#include <QString>
#include <QWidget>
#include <functional>
#include <type_traits>
#include <utility>

namespace hipico {

class Context;

// Where a window goes when it opens.
enum class Centrado {
    Nunca,        // where the system puts it
    SegunAjuste,  // administration and management windows: centred when the setting centrarform is 1
};

// What every window does the same way, whatever its widget class: placement
// and first focus when it opens, the keys that close it, and quiet
// background work. Ventana<> puts it into a QWidget, QMainWindow or QDialog.
class NucleoVentana {
public:
    NucleoVentana(Context& ctx, QWidget& ventana, Centrado centrado)
        : ctx_(ctx), ventana_(ventana), centrado_(centrado) {}

    void primerFoco(QWidget* campo) { primerFoco_ = campo; }
    // Called on every show; the first one places the window and gives the
    // first field the cursor.
    void alMostrar();
    // Esc alone, and Ctrl+F4.
    static bool esEscape(const QKeyEvent& e);
    static bool esCerrar(const QKeyEvent& e);
    // See Ventana::enSegundoPlano.
    bool enSegundoPlano(const std::function<void()>& trabajo);

private:
    void centrar();

    Context& ctx_;
    QWidget& ventana_;
    Centrado centrado_;
    QPointer<QWidget> primerFoco_;
    bool abierta_ = false;
    bool avisado_ = false;
};

// The base of every window of the program: Esc and Ctrl+F4 close it (when no
// field inside takes the key for itself), it centres itself by centrarform
// when it is an administration window, the field it names gets the cursor when
// it opens, and its commands run through the error guard under its name.
template <class Base>
class Ventana : public Base {
protected:
    Ventana(Context& ctx, QWidget* parent, const QString& nombre, const QString& titulo,
            Centrado centrado = Centrado::Nunca)
        : Base(parent, std::is_base_of_v<QDialog, Base> ? Qt::Dialog : Qt::Window),
          ctx_(ctx),
          nucleo_(ctx, *this, centrado) {
        this->setObjectName(nombre);
        this->setWindowTitle(titulo);
    }

    // The field that gets the cursor when the window opens.
    void primerFoco(QWidget* campo) { nucleo_.primerFoco(campo); }

    // Runs a command of the window: a database failure is logged and shown as
    // one message (the error guard), and the command returns false; it also
    // returns false when the command itself returned false.
    template <class F>
    bool proteger(F&& comando) {
        return hipico::proteger(ctx_, this->objectName(), std::forward<F>(comando));
    }
    // Runs a command and gives its value; nullopt after a database failure.
    template <class F>
    auto intentar(F&& comando) {
        return hipico::intentar(ctx_, this->objectName(), std::forward<F>(comando));
    }
    // Work the user did not ask for (a refresh on a timer, a list that follows
    // what is typed): the first failure is logged and shown; while it keeps
    // failing nothing more is said, and once it works again a new failure is
    // told again. Returns whether the work ran to its end.
    bool enSegundoPlano(const std::function<void()>& trabajo) { return nucleo_.enSegundoPlano(trabajo); }

    // What Esc does: close the window. A window with something of its own to
    // cancel first gives Esc that meaning instead.
    virtual void teclaEscape() { this->close(); }

    void showEvent(QShowEvent* event) override {
        Base::showEvent(event);
        nucleo_.alMostrar();
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (NucleoVentana::esEscape(*event))
            teclaEscape();
        else if (NucleoVentana::esCerrar(*event))
            this->close();
        else
            Base::keyPressEvent(event);
    }

    Context& ctx_;

private:
    NucleoVentana nucleo_;
};

}  // namespace hipico
