#pragma once

#include "gui/Ventana.h"
#include "signin/MenuPrincipal.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <functional>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;

namespace hipico {

class Context;
class WindowRegistry;

// The main menu: stays open for the whole run and opens every other window
// inside itself, one per entry (a window already open is shown again). Esc or
// Ctrl+F4 on the menu itself asks to leave the program, as closing it does.
class Form_MenuPrincipal : public Ventana<QMainWindow> {
    Q_OBJECT
public:
    Form_MenuPrincipal(Context& ctx, const WindowRegistry& ventanas, QWidget* parent = nullptr);
    ~Form_MenuPrincipal() override;

    // The load: caption, entries by level, status bar, notice, newer version.
    // Returns false when the program must end.
    bool cargar();

    // An entry or toolbar button was clicked.
    void activar(const QString& entrada);
    // Opens the registered window of that name inside the menu (or shows the
    // one already open); nullptr when nothing was opened.
    QWidget* abrirVentana(const QString& nombre);

    QAction* accion(const QString& entrada) const { return acciones_.value(entrada); }
    QAction* boton(const QString& entrada) const { return botones_.value(entrada); }
    QMenu* menu(const QString& titulo) const { return menus_.value(titulo); }
    QToolBar* barra() const { return Toolbar1_; }
    QMdiArea* area() const { return area_; }
    MenuPrincipal& logica() { return logica_; }

    // Ends the program (after exit is confirmed, or to download a newer version).
    std::function<void()> terminar;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void aplicarVisibilidad();
    void actualizarEstado();
    void fin();

    const WindowRegistry& ventanas_;
    MenuPrincipal logica_;
    QMdiArea* area_;
    QToolBar* Toolbar1_;
    QHash<QString, QAction*> acciones_;
    QHash<QString, QAction*> botones_;
    QHash<QString, QMenu*> menus_;
    QHash<QString, QPointer<QMdiSubWindow>> hijas_;
    bool saliendo_ = false;
};

}  // namespace hipico
