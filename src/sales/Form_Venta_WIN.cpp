#include "sales/Form_Venta_WIN.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Estilo.h"
#include "gui/Teclado.h"
#include "sales/Form_BoletosTaquilla.h"

#include <QAction>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

const QString kTituloResumen = QStringLiteral("RESUMEN DE VENTAS");

// A ticket code is at least its prefix, month, day and two digits of its
// number: longer than any horse number or amount typed in one go.
constexpr int kLargoMinimoCodigo = 6;

QPushButton* botonTotales(const QString& texto, const char* nombre) {
    auto* b = new QPushButton(texto);
    b->setObjectName(QString::fromLatin1(nombre));
    b->setFocusPolicy(Qt::NoFocus);
    return b;
}

}  // namespace

Form_Venta_WIN::Form_Venta_WIN(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Venta_WIN"), QStringLiteral("VENTA DE GANADORES")), logica_(ctx) {
    construir();
    long long carrera = 0;
    const bool cargada = proteger([&] {
        logica_.cargar();
        carrera = logica_.carreraDelGrupo();
    });
    mostrarUnidad();
    if (cargada) {
        // The window starts on the group's open race, in the horse box.
        if (carrera > 0) textCarrera_->setText(QString::number(carrera));
        bton_buscar_Click();
    }
    resize(1180, 690);
    primerFoco(carrera > 0 ? textCaballo_ : textCarrera_);
}

QString Form_Venta_WIN::teclas() const {
    return QStringLiteral("Enter: siguiente / vender   F2: venta   ") +
           (ctx_.session.clientes == 1 ? QStringLiteral("F3: cliente   ") : QString()) +
           QStringLiteral("F5: cobro   F6: boletos del día   F7: resumen   F8: anular   F9: copia   F12: cuadre   "
                          "Esc: cancelar   Ctrl+F4: cerrar");
}

void Form_Venta_WIN::construir() {
    const Session& s = ctx_.session;

    // Menu: every command with its key.
    QMenu* opciones = menuBar()->addMenu(QStringLiteral("&Opciones"));
    auto comando = [&](const QString& texto, const QKeySequence& tecla, auto&& fn) {
        QAction* a = opciones->addAction(texto, this, fn);
        a->setShortcut(tecla);
        return a;
    };
    comando(QStringLiteral("Boletos del Día"), QKeySequence(Qt::Key_F6), [this] { boletosDelDia(); });
    comando(QStringLiteral("Copia del Último Boleto"), QKeySequence(Qt::Key_F9), [this] { reimprimir(); });
    accionAnular_ = comando(QStringLiteral("Anular Boleto"), QKeySequence(Qt::Key_F8), [this] { anular(); });
    accionAnular_->setObjectName(QStringLiteral("anular_boleto_menu"));
    accionAnular_->setEnabled(logica_.puedeAnular());
    opciones->addSeparator();
    comando(QStringLiteral("Resumen de Ventas"), QKeySequence(Qt::Key_F7), [this] { imprimirResumen(); });
    comando(QStringLiteral("Cuadre Final"), QKeySequence(Qt::Key_F12), [this] { cuadreFinal(); });
    opciones->addSeparator();
    accionGanadores_ = opciones->addAction(QStringLiteral("Jugada en Ganadores"), this,
                                           [this] { cambiarUnidad(UnidadVenta::Ganadores); });
    accionBolivares_ = opciones->addAction(QStringLiteral("Jugada en Bs"), this,
                                           [this] { cambiarUnidad(UnidadVenta::Bolivares); });
    accionGanadores_->setCheckable(true);
    accionBolivares_->setCheckable(true);
    opciones->addSeparator();
    // Ctrl+F4 closes the window (the base window's key, not a shortcut of this menu).
    opciones->addAction(QStringLiteral("Salir  (Ctrl+F4)"), this, &QWidget::close);

    auto* fondo = new QWidget;
    fondo->setObjectName(QStringLiteral("fondo"));
    auto* raiz = new QVBoxLayout(fondo);
    raiz->setContentsMargins(6, 6, 6, 6);
    raiz->setSpacing(6);
    encabezado_ = new QLabel(QStringLiteral("VENTA DE GANADORES   ·   CENTRO HIPICO %1   ·   TAQUILLA %2   ·   %3")
                                 .arg(s.ch, s.usuario, fechaVista(s.fecha)));
    encabezado_->setObjectName(QStringLiteral("encabezado"));
    encabezado_->setWordWrap(true);
    raiz->addWidget(encabezado_);

    auto* columnas = new QHBoxLayout;
    raiz->addLayout(columnas, 1);

    // Left: races and runners.
    auto* izquierda = new QVBoxLayout;
    auto* grupoCarreras = new QGroupBox(QStringLiteral("CARRERAS"));
    auto* lc = new QVBoxLayout(grupoCarreras);
    listaCarreras_ = new QListWidget;
    listaCarreras_->setObjectName(QStringLiteral("listaCarreras"));
    listaCarreras_->setFocusPolicy(Qt::NoFocus);
    lc->addWidget(listaCarreras_);
    auto* grupoCorredores = new QGroupBox(QStringLiteral("CORREDORES"));
    auto* lr = new QVBoxLayout(grupoCorredores);
    listaCorredores_ = new QListWidget;
    listaCorredores_->setObjectName(QStringLiteral("listaCorredores"));
    listaCorredores_->setFocusPolicy(Qt::NoFocus);
    lr->addWidget(listaCorredores_);
    izquierda->addWidget(grupoCarreras, 2);
    izquierda->addWidget(grupoCorredores, 3);
    columnas->addLayout(izquierda, 3);

    // Middle: sale, password frame, last ticket, payment.
    auto* medio = new QVBoxLayout;
    medio->addWidget(construirVenta());
    frameClave_ = new QFrame;
    frameClave_->setObjectName(QStringLiteral("frameClave"));
    auto* fc = new QHBoxLayout(frameClave_);
    fc->addWidget(etiqueta(QStringLiteral("CLAVE DEL SUPERVISOR")));
    textClave_ = caja("Text_Clave", nullptr, 45);
    textClave_->setEchoMode(QLineEdit::Password);
    fc->addWidget(textClave_, 1);
    frameClave_->hide();
    medio->addWidget(frameClave_);
    ultimoBoleto_ = new QLabel(QStringLiteral("Sin ventas en esta sesión"));
    ultimoBoleto_->setObjectName(QStringLiteral("ultimoBoleto"));
    ultimoBoleto_->setWordWrap(true);
    ultimoBoleto_->setMinimumHeight(56);
    medio->addWidget(ultimoBoleto_);
    medio->addWidget(construirCobro());
    medio->addStretch(1);
    columnas->addLayout(medio, 5);

    // Right: totals, the stretch since the last cash-up, sales per horse.
    auto* derecha = new QVBoxLayout;
    derecha->addWidget(construirTotales());
    auto* grupoCaballos = new QGroupBox(QStringLiteral("VENTAS POR CABALLO"));
    auto* gcab = new QVBoxLayout(grupoCaballos);
    auto* cabecera = new QLabel(QStringLiteral("        CABALLO          VENTA"));
    cabecera->setObjectName(QStringLiteral("cabeceraCaballos"));
    gcab->addWidget(cabecera);
    ventasCaballos_ = new QListWidget;
    ventasCaballos_->setFocusPolicy(Qt::NoFocus);
    gcab->addWidget(ventasCaballos_);
    derecha->addWidget(grupoCaballos, 1);
    columnas->addLayout(derecha, 4);

    setCentralWidget(fondo);
    // Every key of the window, always in sight.
    auto* ayuda = new QLabel(teclas());
    ayuda->setObjectName(QStringLiteral("teclas"));
    ayuda->setWordWrap(true);
    statusBar()->addWidget(ayuda, 1);

    // Keyboard flow: race, horse (checked there and then), amount; the client
    // box is left out of Enter's way.
    ordenTabulacion({textCarrera_, textCaballo_, textCliente_, textMonto_, botonProcesar_, textCobro_, botonCobrar_});
    EnterMovesOn::install(textCarrera_);
    enterEjecuta(textCaballo_, [this] { caballoEnter(); });
    enterVaA(textCliente_, textMonto_);
    enterEjecuta(textMonto_, [this] { Boton_Procesar_Click(); });
    enterEjecuta(textClave_, [this] { Text_Clave_Enter(); });
    enterEjecuta(textCobro_, [this] { Text_boletoCobro_Enter(); });

    connect(botonProcesar_, &QPushButton::clicked, this, &Form_Venta_WIN::Boton_Procesar_Click);
    connect(botonCobrar_, &QPushButton::clicked, this, &Form_Venta_WIN::Boton_Cobrar_Boleto2_Click);
    connect(textCarrera_, &QLineEdit::textChanged, this, [this] { cargarCorredores(); });
    connect(textCaballo_, &QLineEdit::textChanged, this, [this] { mostrarNombreCaballo(); });
    connect(textMonto_, &QLineEdit::textChanged, this, [this] { mostrarCosto(); });
    connect(textCobro_, &QLineEdit::textEdited, this, [this] {
        botonCobrar_->setEnabled(false);
        resultadoCobro_->clear();
    });

    // Window-wide keys: they reach the window whichever box has the cursor
    // (Esc too, through teclaEscape).
    new QShortcut(QKeySequence(Qt::Key_F2), this, [this] {
        textCaballo_->setFocus();
        textCaballo_->selectAll();
    });
    new QShortcut(QKeySequence(Qt::Key_F3), this, [this] {
        if (textCliente_->isVisible()) textCliente_->setFocus();
    });
    new QShortcut(QKeySequence(Qt::Key_F5), this, [this] { limpiarCobro(); });

    // A scanned code goes to the payment lookup wherever the cursor is.
    auto* lector = new LectorCodigos(this, kLargoMinimoCodigo, [this](const QString& c) { cobrarLeido(c); });
    lector->excluir(textClave_);

    reloj_ = new QTimer(this);
    reloj_->setInterval(15000);
    connect(reloj_, &QTimer::timeout, this, [this] { cargarCarreras(); });
    reloj_->start();
}

QWidget* Form_Venta_WIN::construirVenta() {
    auto* grupoVenta = new QGroupBox(QStringLiteral("VENTA"));
    auto* gv = new QGridLayout(grupoVenta);
    textCarrera_ = caja("Text_Carrera", nullptr, 3, SoloNumeros);
    textCaballo_ = caja("Text_Caballo", nullptr, 3, SoloNumeros);
    textCliente_ = caja("Text_cliente", nullptr, 45);
    textMonto_ = caja("Text_Monto", nullptr, 12, SoloNumerosComa);
    for (QLineEdit* e : {textCarrera_, textCaballo_}) e->setMaximumWidth(90);
    textMonto_->setMaximumWidth(170);
    nombreCaballo_ = new QLabel;
    nombreCaballo_->setObjectName(QStringLiteral("nombreCaballo"));
    etiquetaUnidad_ = etiqueta(QString());
    etiquetaUnidad_->setObjectName(QStringLiteral("unidad"));
    costo_ = new QLabel;
    costo_->setObjectName(QStringLiteral("costo"));
    etiquetaCliente_ = etiqueta(QStringLiteral("CLIENTE"));
    gv->addWidget(etiqueta(QStringLiteral("CARRERA")), 0, 0);
    gv->addWidget(textCarrera_, 0, 1);
    gv->addWidget(etiqueta(QStringLiteral("CABALLO")), 1, 0);
    gv->addWidget(textCaballo_, 1, 1);
    gv->addWidget(nombreCaballo_, 1, 2);
    gv->addWidget(etiquetaCliente_, 2, 0);
    gv->addWidget(textCliente_, 2, 1, 1, 2);
    gv->addWidget(etiqueta(QStringLiteral("MONTO")), 3, 0);
    gv->addWidget(textMonto_, 3, 1);
    auto* unidadYCosto = new QVBoxLayout;
    unidadYCosto->setSpacing(0);
    unidadYCosto->addWidget(etiquetaUnidad_);
    unidadYCosto->addWidget(costo_);
    gv->addLayout(unidadYCosto, 3, 2);
    botonProcesar_ = new QPushButton(QStringLiteral("VENDER  (Enter)"));
    botonProcesar_->setObjectName(QStringLiteral("Boton_Procesar"));
    botonProcesar_->setAutoDefault(true);
    gv->addWidget(botonProcesar_, 4, 0, 1, 3);
    gv->setColumnStretch(2, 1);
    // The client box only for groups that work with client accounts.
    const bool conClientes = ctx_.session.clientes == 1;
    etiquetaCliente_->setVisible(conClientes);
    textCliente_->setVisible(conClientes);
    return grupoVenta;
}

QWidget* Form_Venta_WIN::construirCobro() {
    auto* grupoCobro = new QGroupBox(QStringLiteral("COBRO DE BOLETOS"));
    auto* gc = new QGridLayout(grupoCobro);
    textCobro_ = caja("Text_boletoCobro", nullptr, 25);
    botonCobrar_ = new QPushButton(QStringLiteral("COBRAR"));
    botonCobrar_->setObjectName(QStringLiteral("Boton_Cobrar_Boleto2"));
    botonCobrar_->setAutoDefault(true);
    botonCobrar_->setEnabled(false);
    resultadoCobro_ = new QLabel;
    resultadoCobro_->setObjectName(QStringLiteral("resultadoCobro"));
    resultadoCobro_->setWordWrap(true);
    gc->addWidget(etiqueta(QStringLiteral("BOLETO")), 0, 0);
    gc->addWidget(textCobro_, 0, 1);
    gc->addWidget(botonCobrar_, 0, 2);
    gc->addWidget(resultadoCobro_, 1, 0, 1, 3);
    cobro_ = {textCobro_, botonCobrar_, resultadoCobro_};
    return grupoCobro;
}

QWidget* Form_Venta_WIN::construirTotales() {
    auto* grupoTotales = new QGroupBox(QStringLiteral("TOTALES DEL DÍA"));
    auto* gt = new QGridLayout(grupoTotales);
    gt->setVerticalSpacing(2);
    auto fila = [&](int i, const QString& texto, QLabel*& valor) {
        gt->addWidget(etiqueta(texto), i, 0);
        valor = etiqueta(QString(), "total");
        valor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        gt->addWidget(valor, i, 1);
    };
    fila(0, QStringLiteral("VENTA"), totVenta_);
    fila(1, QStringLiteral("PREMIOS PAGADOS"), totPagado_);
    fila(2, QStringLiteral("POR PAGAR"), totPorPagar_);
    fila(3, QStringLiteral("SALDO"), totSaldo_);
    fila(4, QStringLiteral("MONTO EN CAJA"), totCaja_);
    fila(5, QStringLiteral("ANULADOS"), totAnulados_);
    tramo_ = new QLabel;
    tramo_->setObjectName(QStringLiteral("tramo"));
    tramo_->setWordWrap(true);
    gt->addWidget(tramo_, 6, 0, 1, 2);
    auto* botones = new QGridLayout;
    QPushButton* buscar = botonTotales(QStringLiteral("Actualizar"), "bton_buscar");
    QPushButton* lista = botonTotales(QStringLiteral("Boletos (F6)"), "boton_boletos");
    QPushButton* resumen = botonTotales(QStringLiteral("Resumen (F7)"), "Bton_ImprimirRV");
    QPushButton* cuadre = botonTotales(QStringLiteral("Cuadre Final (F12)"), "boton_cuadrefinal");
    botones->addWidget(buscar, 0, 0);
    botones->addWidget(lista, 0, 1);
    botones->addWidget(resumen, 1, 0);
    botones->addWidget(cuadre, 1, 1);
    gt->addLayout(botones, 7, 0, 1, 2);
    connect(buscar, &QPushButton::clicked, this, &Form_Venta_WIN::bton_buscar_Click);
    connect(lista, &QPushButton::clicked, this, [this] { boletosDelDia(); });
    connect(resumen, &QPushButton::clicked, this, &Form_Venta_WIN::imprimirResumen);
    connect(cuadre, &QPushButton::clicked, this, &Form_Venta_WIN::cuadreFinal);
    return grupoTotales;
}

void Form_Venta_WIN::mostrarUnidad() {
    const bool unidades = logica_.unidad() == UnidadVenta::Ganadores;
    accionGanadores_->setChecked(unidades);
    accionBolivares_->setChecked(!unidades);
    accionBolivares_->setText(ctx_.session.enDolares() ? QStringLiteral("Jugada en $") : QStringLiteral("Jugada en Bs"));
    etiquetaUnidad_->setText(unidades ? QStringLiteral("GANADORES") : logica_.etiquetaMoneda());
    mostrarCosto();
}

void Form_Venta_WIN::mostrarCosto() { costo_->setText(logica_.textoCosto(textMonto_->text())); }

void Form_Venta_WIN::cambiarUnidad(UnidadVenta u) {
    if (proteger([&] { return logica_.cambiarUnidad(u); })) {
        textMonto_->clear();
        textMonto_->setFocus();
    }
    mostrarUnidad();
}

// The lists refresh by themselves (the races every 15 seconds, the runners as
// the race is typed): a failure is told once, not on every refresh.
void Form_Venta_WIN::cargarCarreras() {
    enSegundoPlano([this] { mostrarCarreras(); });
}

void Form_Venta_WIN::cargarCorredores() {
    enSegundoPlano([this] { mostrarCorredores(); });
}

void Form_Venta_WIN::mostrarCarreras() {
    const auto lista = logica_.carreras();
    listaCarreras_->clear();
    for (const auto& c : lista) {
        auto* item = new QListWidgetItem(QStringLiteral("CARRERA %1   %2")
                                             .arg(c.carrera, 2)
                                             .arg(c.abierta ? QStringLiteral("ABIERTA") : QStringLiteral("CERRADA")));
        item->setForeground(c.abierta ? QColor(0, 140, 0) : QColor(192, 0, 0));
        listaCarreras_->addItem(item);
    }
}

void Form_Venta_WIN::mostrarCorredores() {
    corredores_.clear();
    listaCorredores_->clear();
    ventasCaballos_->clear();
    mostrarNombreCaballo();
    const long long carrera = leerEntero(textCarrera_->text()).value_or(0);
    if (carrera <= 0) return;
    corredores_ = logica_.corredores(carrera);
    for (const auto& c : corredores_) {
        auto* item = new QListWidgetItem(
            QStringLiteral("%1  %2").arg(c.numero, 2).arg(c.retirado ? QStringLiteral(" R  E  T  I  R  A  D  O ") : c.nombre));
        if (c.retirado) item->setForeground(QColor(192, 0, 0));
        listaCorredores_->addItem(item);
    }
    mostrarNombreCaballo();
    for (const auto& v : logica_.Calcular_VentasCaballos(carrera))
        ventasCaballos_->addItem(
            QString(8, QLatin1Char(' ')) +
            QStringLiteral("%1%2").arg(v.caballo, 7).arg(logica_.montoPantalla(v.unidades * logica_.valorGanador()), 15));
}

// The horse's name as soon as its number is typed: "RETIRADO" for a scratched
// one, and a warning for a number the race does not have.
void Form_Venta_WIN::mostrarNombreCaballo() {
    const QString tecleado = textCaballo_->text().trimmed();
    const std::optional<long long> n = leerEntero(tecleado);
    QString nombre;
    bool encontrado = false;
    if (n)
        for (const auto& c : corredores_)
            if (c.numero == *n) {
                nombre = c.retirado ? QStringLiteral("RETIRADO") : c.nombre;
                encontrado = !c.retirado;
            }
    if (!tecleado.isEmpty() && nombre.isEmpty() && !corredores_.isEmpty()) nombre = QStringLiteral("NO CORRE EN ESTA CARRERA");
    nombreCaballo_->setText(nombre);
    marcar(nombreCaballo_, "aviso", !tecleado.isEmpty() && !encontrado && !corredores_.isEmpty());
}

void Form_Venta_WIN::MostrarFrameClave(bool visible) {
    frameClave_->setVisible(visible);
    textClave_->clear();
    if (visible) textClave_->setFocus();
}

void Form_Venta_WIN::LIMPIAR() {
    textCaballo_->clear();
    textMonto_->clear();
    textCliente_->clear();
    nombreCaballo_->clear();
    textCaballo_->setFocus();
}

// The cursor on the box a refusal is about, its text selected for retyping.
void Form_Venta_WIN::enCampo(VentaGanadores::Campo campo) {
    QLineEdit* caja = textMonto_;
    switch (campo) {
    case VentaGanadores::Campo::Carrera: caja = textCarrera_; break;
    case VentaGanadores::Campo::Caballo: caja = textCaballo_; break;
    case VentaGanadores::Campo::Cliente: caja = textCliente_->isVisible() ? textCliente_ : textMonto_; break;
    case VentaGanadores::Campo::Monto: break;
    }
    caja->setFocus();
    caja->selectAll();
}

void Form_Venta_WIN::caballoEnter() {
    if (logica_.revisarCaballo(corredores_, textCaballo_->text())) {
        textMonto_->setFocus();
        textMonto_->selectAll();
    } else {
        enCampo(VentaGanadores::Campo::Caballo);
    }
}

void Form_Venta_WIN::Boton_Procesar_Click() {
    const auto venta = intentar([this] {
                           return logica_.procesarVenta(textCarrera_->text(), textCaballo_->text(), textMonto_->text(),
                                                        textCliente_->isVisible() ? textCliente_->text() : QString());
                       }).value_or(VentaGanadores::Venta());
    if (venta.resultado == VentaGanadores::Resultado::PedirClave && logica_.esperandoClave()) {
        MostrarFrameClave(true);
        return;
    }
    if (venta.resultado != VentaGanadores::Resultado::Vendido) {
        enCampo(venta.campo);
        return;
    }
    vendido(venta.boleto);
}

void Form_Venta_WIN::vendido(const VentaGanadores::Boleto& b) {
    codigoUltimo_ = b.codigo;
    mostrarUltimo();
    LIMPIAR();
    bton_buscar_Click();
}

// The last ticket sold (F9 prints a copy of it); once voided it says so.
void Form_Venta_WIN::mostrarUltimo() {
    const auto& b = logica_.ultimoBoleto();
    if (!b) {
        if (!codigoUltimo_.isEmpty())
            ultimoBoleto_->setText(QStringLiteral("ÚLTIMO BOLETO  %1   ANULADO").arg(codigoUltimo_));
        return;
    }
    ultimoBoleto_->setText(QStringLiteral("ÚLTIMO BOLETO  %1   C: %2   CAB: (%3) %4\n%5 Ganadores   %6%7")
                               .arg(b->codigo)
                               .arg(b->carrera)
                               .arg(b->caballo)
                               .arg(b->nombreCaballo, textoUnidades(b->ganadores), logica_.montoPantalla(b->costo),
                                    b->conClave ? QStringLiteral("   (CLAVE)") : QString()));
}

void Form_Venta_WIN::Text_Clave_Enter() {
    const QString clave = textClave_->text();
    MostrarFrameClave(false);
    const auto venta = intentar([&] { return logica_.ventaConClave(clave); }).value_or(VentaGanadores::Venta());
    if (venta.resultado == VentaGanadores::Resultado::Vendido) {
        vendido(venta.boleto);
    } else {
        enCampo(VentaGanadores::Campo::Monto);
    }
}

void Form_Venta_WIN::cobrarLeido(const QString& codigo) {
    textCobro_->setText(codigo);
    Text_boletoCobro_Enter();
}

void Form_Venta_WIN::Text_boletoCobro_Enter() { cobro_.consultar(ctx_, objectName(), logica_); }

void Form_Venta_WIN::Boton_Cobrar_Boleto2_Click() {
    cobro_.cobrar(ctx_, objectName(), logica_);
    bton_buscar_Click();
    // Back to selling; the next scanned code is taken from there.
    textCaballo_->setFocus();
}

void Form_Venta_WIN::limpiarCobro() {
    textCobro_->clear();
    resultadoCobro_->clear();
    botonCobrar_->setEnabled(false);
    textCobro_->setFocus();
}

void Form_Venta_WIN::bton_buscar_Click() {
    proteger([this] {
        mostrarTotales();
        mostrarCarreras();
        mostrarCorredores();
    });
}

void Form_Venta_WIN::mostrarTotales() {
    const TotalesDia t = logica_.Totalizar_Dia();
    auto conCantidad = [this](double monto, long long n) {
        return QStringLiteral("%1  (%2)").arg(logica_.montoPantalla(monto)).arg(n);
    };
    totVenta_->setText(conCantidad(t.venta, t.cantVenta));
    totPagado_->setText(conCantidad(t.cobrado, t.cantCobrado));
    totPorPagar_->setText(conCantidad(t.porCobrar, t.cantPorCobrar));
    totSaldo_->setText(logica_.montoPantalla(t.saldo()));
    totCaja_->setText(logica_.montoPantalla(t.caja()));
    totAnulados_->setText(QString::number(t.anulados));
    const TramoCaja c = logica_.desdeUltimoCuadre();
    tramo_->setText(QStringLiteral("DESDE %1: %2 BOLETOS\nVENTA %3 · PAGADO %4 · EN CAJA %5")
                        .arg(c.desde.isEmpty() ? QStringLiteral("EL INICIO DEL DÍA")
                                               : QStringLiteral("EL CUADRE DE LAS ") + c.desde)
                        .arg(c.boletos)
                        .arg(logica_.montoPantalla(c.venta), logica_.montoPantalla(c.pagado),
                             logica_.montoPantalla(c.esperado())));
}

void Form_Venta_WIN::anular() {
    if (proteger([this] { return logica_.anularBoleto(); })) {
        mostrarUltimo();
        bton_buscar_Click();
    }
    LIMPIAR();
}

void Form_Venta_WIN::reimprimir() {
    proteger([this] { return logica_.reimprimir(); });
    mostrarUltimo();
}

Form_BoletosTaquilla* Form_Venta_WIN::boletosDelDia() {
    if (!lista_) {
        lista_ = new Form_BoletosTaquilla(ctx_, logica_, this);
        // What the list voided shows here when it closes.
        connect(lista_, &QDialog::finished, this, [this] {
            mostrarUltimo();
            bton_buscar_Click();
            textCaballo_->setFocus();
        });
    }
    lista_->open();
    lista_->raise();
    lista_->activateWindow();
    return lista_;
}

void Form_Venta_WIN::imprimirResumen() {
    const auto desde = ctx_.dialogs.ask(kTituloResumen, QStringLiteral("DESDE LA CARRERA (vacío o 0: TODAS)"));
    if (desde) {
        const long long primera = leerEntero(*desde).value_or(0);
        long long ultima = primera;
        std::optional<QString> hasta = *desde;
        if (primera > 0) {
            hasta = ctx_.dialogs.ask(kTituloResumen, QStringLiteral("HASTA LA CARRERA"), *desde);
            if (hasta) ultima = std::max(leerEntero(*hasta).value_or(0), 0LL);
            if (ultima <= 0) ultima = primera;
        }
        if (hasta) proteger([&] { return logica_.imprimirResumen(primera, ultima); });
    }
    textCaballo_->setFocus();
}

void Form_Venta_WIN::cuadreFinal() {
    if (proteger([this] { return logica_.cuadreFinal(); })) bton_buscar_Click();
    textCaballo_->setFocus();
}

void Form_Venta_WIN::Escape() {
    if (frameClave_->isVisible()) {
        logica_.cancelarClave();
        MostrarFrameClave(false);
        enCampo(VentaGanadores::Campo::Monto);
    } else if (textCobro_->hasFocus() || botonCobrar_->hasFocus()) {
        limpiarCobro();
        textCaballo_->setFocus();
    } else {
        LIMPIAR();
    }
}

}  // namespace hipico
