#include "signin/Form_MenuPrincipal.h"

#include "core/Context.h"
#include "core/WindowRegistry.h"
#include "gui/FormHelpers.h"
#include "signin/MenuEntradas.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QStatusBar>
#include <QToolBar>

namespace hipico {

namespace {

const QColor kFondo(0x2f, 0x4f, 0x3f);

// The menu's background: the company and who is signed in, behind the windows.
class AreaMenu : public QMdiArea {
public:
    AreaMenu(const MenuPrincipal& logica, QWidget* parent) : QMdiArea(parent), logica_(logica) {
        setBackground(kFondo);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QMdiArea::paintEvent(event);
        QPainter p(viewport());
        const QStringList lineas = logica_.lineasFondo();
        QRect r = viewport()->rect();
        QFont grande = font();
        grande.setPointSize(28);
        grande.setBold(true);
        p.setPen(QColor(255, 255, 255, 70));
        p.setFont(grande);
        const int alto = QFontMetrics(grande).height();
        p.drawText(r.adjusted(0, 0, 0, -alto), Qt::AlignCenter, lineas.value(0));
        QFont chica = font();
        chica.setPointSize(14);
        p.setFont(chica);
        p.drawText(r.adjusted(0, alto, 0, 0), Qt::AlignCenter, lineas.value(1));
    }

private:
    const MenuPrincipal& logica_;
};

QIcon iconoVentana() {
    QPixmap p(16, 16);
    p.fill(kFondo);
    return QIcon(p);
}

}  // namespace

Form_MenuPrincipal::Form_MenuPrincipal(Context& ctx, const WindowRegistry& ventanas, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_MenuPrincipal"), MenuPrincipal::titulo(ctx.session)),
      terminar([] { QCoreApplication::exit(0); }),
      ventanas_(ventanas),
      logica_(ctx, ventanas) {

    area_ = new AreaMenu(logica_, this);
    area_->setObjectName("areaVentanas");
    // A window takes the whole area only when it does not fit in it; the
    // others keep their own size whichever window was active before.
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    setCentralWidget(area_);

    Toolbar1_ = new QToolBar(QStringLiteral("Ventas"), this);
    Toolbar1_->setObjectName("Toolbar1");
    Toolbar1_->setMovable(false);
    Toolbar1_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    addToolBar(Qt::TopToolBarArea, Toolbar1_);

    for (const QString& titulo : menusPrincipales()) {
        QMenu* m = menuBar()->addMenu(titulo);
        menus_.insert(titulo, m);
    }
    for (const EntradaMenu& e : entradasMenu()) {
        QAction* a = menus_.value(e.menu)->addAction(e.titulo);
        a->setObjectName(e.nombre);
        const QString nombre = e.nombre;
        connect(a, &QAction::triggered, this, [this, nombre] { activar(nombre); });
        acciones_.insert(e.nombre, a);
        if (!e.boton.isEmpty()) {
            QAction* b = Toolbar1_->addAction(e.boton);
            b->setObjectName("Toolbar1_" + e.nombre);
            connect(b, &QAction::triggered, this, [this, nombre] { activar(nombre); });
            botones_.insert(e.nombre, b);
        }
    }

    ctx_.tituloMenu = [this](const QString& titulo) {
        setWindowTitle(titulo);
        actualizarEstado();
        area_->viewport()->update();
    };
    aplicarVisibilidad();
    actualizarEstado();
    resize(1280, 800);
}

Form_MenuPrincipal::~Form_MenuPrincipal() { ctx_.tituloMenu = nullptr; }

bool Form_MenuPrincipal::cargar() {
    setWindowTitle(MenuPrincipal::titulo(ctx_.session));
    logica_.cargarAjustes();
    aplicarVisibilidad();
    actualizarEstado();
    if (logica_.avisos() == MenuPrincipal::Carga::Terminar) {
        fin();
        return false;
    }
    return true;
}

void Form_MenuPrincipal::aplicarVisibilidad() {
    QHash<QString, bool> conEntradas;
    for (const EntradaMenu& e : entradasMenu()) {
        const bool ver = logica_.visible(e.nombre);
        const bool usar = logica_.habilitada(e.nombre);
        QAction* a = acciones_.value(e.nombre);
        a->setVisible(ver);
        a->setEnabled(usar);
        if (ver) conEntradas[e.menu] = true;
        if (QAction* b = botones_.value(e.nombre)) {
            b->setVisible(ver);
            b->setEnabled(usar);
        }
    }
    for (auto it = menus_.cbegin(); it != menus_.cend(); ++it) it.value()->menuAction()->setVisible(conEntradas.value(it.key()));
    bool conBotones = false;
    for (QAction* b : std::as_const(botones_)) conBotones = conBotones || b->isVisible();
    Toolbar1_->setVisible(conBotones);
}

void Form_MenuPrincipal::actualizarEstado() {
    QStatusBar* barra = statusBar();
    const auto viejos = barra->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    for (QLabel* l : viejos) {
        barra->removeWidget(l);
        delete l;
    }
    for (const QString& texto : logica_.panelesEstado()) {
        auto* panel = new QLabel(texto, barra);
        panel->setFrameShape(QFrame::StyledPanel);
        panel->setContentsMargins(6, 0, 6, 0);
        barra->addWidget(panel);
    }
}

void Form_MenuPrincipal::activar(const QString& entrada) {
    proteger([&] {
        if (entrada == QLatin1String("anular_menu")) {
            logica_.AnularBoleto();  // re-checks its own allow-list
            return;
        }
        if (!logica_.permitido(entrada)) return;
        if (entrada == QLatin1String("bdlocalmenu")) {
            logica_.BorrarBDLocal();
        } else if (entrada == QLatin1String("cerrar_menu") || entrada == QLatin1String("salir_menu2")) {
            close();
        } else if (entrada == QLatin1String("subasta_menu")) {
            const QString tablero = logica_.ElegirSubasta();
            if (!tablero.isEmpty()) abrirVentana(tablero);
        } else if (entrada == QLatin1String("imp_tfactual")) {
            if (logica_.LlenarTFActual()) abrirVentana(entrada);
        } else {
            abrirVentana(entrada);
        }
    });
}

QWidget* Form_MenuPrincipal::abrirVentana(const QString& nombre) {
    if (QMdiSubWindow* abierta = hijas_.value(nombre)) {
        abierta->widget()->show();
        abierta->show();
        if (abierta->isMinimized()) abierta->showNormal();
        area_->setActiveSubWindow(abierta);
        return abierta->widget();
    }
    QWidget* ventana = ventanas_.create(nombre, ctx_, this);
    if (!ventana) return nullptr;
    const bool conTamano = ventana->testAttribute(Qt::WA_Resized);
    const QSize tamano = ventana->size();
    QMdiSubWindow* hija = area_->addSubWindow(ventana);
    hija->setAttribute(Qt::WA_DeleteOnClose);
    hija->setObjectName("sub_" + nombre);
    hija->setWindowIcon(iconoVentana());
    ventana->installEventFilter(this);
    hijas_.insert(nombre, hija);
    hija->show();
    // The window keeps the size it gave itself; the frame goes around it.
    // One too big for the area fills it; the others open inside it.
    if (conTamano) hija->resize(tamano + (hija->size() - ventana->size()));
    const QSize libre = area_->viewport()->size();
    if (hija->width() > libre.width() || hija->height() > libre.height())
        hija->showMaximized();
    else
        MantenerDentro(hija, area_->viewport());
    area_->setActiveSubWindow(hija);
    // The cursor goes to the field the window chose for itself.
    if (QWidget* campo = ventana->focusWidget()) campo->setFocus();
    else ventana->setFocus();
    return ventana;
}

bool Form_MenuPrincipal::eventFilter(QObject* watched, QEvent* event) {
    // A window that closes itself (its own exit button) takes its frame along,
    // once it really closed (a window may refuse to close).
    if (event->type() == QEvent::Close) {
        for (const QPointer<QMdiSubWindow>& hija : std::as_const(hijas_)) {
            if (hija && hija->widget() == watched) {
                QPointer<QMdiSubWindow> marco = hija;
                QMetaObject::invokeMethod(
                    this,
                    [marco] {
                        if (marco && (!marco->widget() || marco->widget()->isHidden())) marco->deleteLater();
                    },
                    Qt::QueuedConnection);
                break;
            }
        }
    }
    return Ventana::eventFilter(watched, event);
}

void Form_MenuPrincipal::fin() {
    saliendo_ = true;
    if (terminar) terminar();
}

void Form_MenuPrincipal::closeEvent(QCloseEvent* event) {
    if (saliendo_) {
        event->accept();
        return;
    }
    if (!logica_.Salir()) {
        event->ignore();
        return;
    }
    event->accept();
    fin();
}

}  // namespace hipico
