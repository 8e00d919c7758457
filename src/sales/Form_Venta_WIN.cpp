#include "sales/Form_Venta_WIN.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"

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

QLabel* etiqueta(const QString& texto, const char* clase = "campo") {
    auto* l = new QLabel(texto);
    l->setProperty("class", clase);
    return l;
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
    resize(1180, 720);
    primerFoco(carrera > 0 ? textCaballo_ : textCarrera_);
}

void Form_Venta_WIN::construir() {
    const Session& s = ctx_.session;

    // Menu
    QMenu* opciones = menuBar()->addMenu(QStringLiteral("&Opciones"));
    accionAnular_ = opciones->addAction(QStringLiteral("Anular Boleto"), this, &Form_Venta_WIN::anular);
    accionAnular_->setObjectName(QStringLiteral("anular_boleto_menu"));
    accionAnular_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_A));
    accionAnular_->setEnabled(logica_.puedeAnular());
    opciones->addSeparator();
    accionGanadores_ = opciones->addAction(QStringLiteral("Jugada en Ganadores"), this,
                                           [this] { cambiarUnidad(UnidadVenta::Ganadores); });
    accionBolivares_ = opciones->addAction(QStringLiteral("Jugada en Bs"), this,
                                           [this] { cambiarUnidad(UnidadVenta::Bolivares); });
    accionGanadores_->setCheckable(true);
    accionBolivares_->setCheckable(true);
    opciones->addSeparator();
    QAction* reimprimir = opciones->addAction(QStringLiteral("Reimprimir Ultimo Boleto"), this,
                                              [this] { proteger([this] { return logica_.reimprimir(); }); });
    reimprimir->setShortcut(QKeySequence(Qt::Key_F9));
    opciones->addSeparator();
    opciones->addAction(QStringLiteral("Salir"), this, &QWidget::close);

    auto* fondo = new QWidget;
    fondo->setObjectName(QStringLiteral("fondo"));
    auto* raiz = new QVBoxLayout(fondo);
    raiz->setContentsMargins(8, 8, 8, 8);
    encabezado_ = new QLabel(QStringLiteral("VENTA DE GANADORES   ·   CENTRO HIPICO %1   ·   TAQUILLA %2   ·   %3")
                                 .arg(s.ch, s.usuario, fechaVista(s.fecha)));
    encabezado_->setObjectName(QStringLiteral("encabezado"));
    // On a narrow screen the heading takes two lines instead of widening the
    // window past a 1024-pixel screen.
    encabezado_->setWordWrap(true);
    raiz->addWidget(encabezado_);

    auto* columnas = new QHBoxLayout;
    raiz->addLayout(columnas, 1);

    // Left: races and runners
    auto* izquierda = new QVBoxLayout;
    auto* grupoCarreras = new QGroupBox(QStringLiteral("CARRERAS"));
    auto* lc = new QVBoxLayout(grupoCarreras);
    listaCarreras_ = new QListWidget;
    listaCarreras_->setFocusPolicy(Qt::NoFocus);
    lc->addWidget(listaCarreras_);
    auto* grupoCorredores = new QGroupBox(QStringLiteral("CORREDORES"));
    auto* lr = new QVBoxLayout(grupoCorredores);
    listaCorredores_ = new QListWidget;
    listaCorredores_->setFocusPolicy(Qt::NoFocus);
    lr->addWidget(listaCorredores_);
    izquierda->addWidget(grupoCarreras, 2);
    izquierda->addWidget(grupoCorredores, 3);
    columnas->addLayout(izquierda, 3);

    // Middle: sale, password frame, payment
    auto* medio = new QVBoxLayout;
    auto* grupoVenta = new QGroupBox(QStringLiteral("VENTA"));
    auto* gv = new QGridLayout(grupoVenta);
    textCarrera_ = caja("Text_Carrera", nullptr, 3);
    textCaballo_ = caja("Text_Caballo", nullptr, 3);
    textCliente_ = caja("Text_cliente", nullptr, 45);
    textMonto_ = caja("Text_Monto", nullptr, 12);
    KeyFilter::install(textCarrera_, SoloNumeros);
    KeyFilter::install(textCaballo_, SoloNumeros);
    KeyFilter::install(textMonto_, SoloNumerosComa);
    nombreCaballo_ = new QLabel;
    nombreCaballo_->setObjectName(QStringLiteral("nombreCaballo"));
    etiquetaMonto_ = etiqueta(QStringLiteral("MONTO"));
    etiquetaUnidad_ = etiqueta(QString());
    etiquetaCliente_ = etiqueta(QStringLiteral("CLIENTE"));
    gv->addWidget(etiqueta(QStringLiteral("CARRERA")), 0, 0);
    gv->addWidget(textCarrera_, 0, 1);
    gv->addWidget(etiqueta(QStringLiteral("CABALLO")), 1, 0);
    gv->addWidget(textCaballo_, 1, 1);
    gv->addWidget(nombreCaballo_, 1, 2);
    gv->addWidget(etiquetaCliente_, 2, 0);
    gv->addWidget(textCliente_, 2, 1, 1, 2);
    gv->addWidget(etiquetaMonto_, 3, 0);
    gv->addWidget(textMonto_, 3, 1);
    gv->addWidget(etiquetaUnidad_, 3, 2);
    botonProcesar_ = new QPushButton(QStringLiteral("VENDER  (Enter)"));
    botonProcesar_->setObjectName(QStringLiteral("Boton_Procesar"));
    botonProcesar_->setAutoDefault(true);
    gv->addWidget(botonProcesar_, 4, 0, 1, 3);
    gv->setColumnStretch(2, 1);
    const bool conClientes = s.clientes == 1;
    etiquetaCliente_->setVisible(conClientes);
    textCliente_->setVisible(conClientes);
    medio->addWidget(grupoVenta);

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
    ultimoBoleto_->setMinimumHeight(64);
    medio->addWidget(ultimoBoleto_);

    auto* grupoCobro = new QGroupBox(QStringLiteral("COBRO DE BOLETOS"));
    auto* gc = new QGridLayout(grupoCobro);
    textCobro_ = caja("Text_boletoCobro", nullptr, 25);
    botonCobrar_ = new QPushButton(QStringLiteral("COBRAR"));
    botonCobrar_->setObjectName(QStringLiteral("Boton_Cobrar_Boleto2"));
    botonCobrar_->setAutoDefault(true);
    botonCobrar_->setEnabled(false);
    resultadoCobro_ = new QLabel;
    resultadoCobro_->setObjectName(QStringLiteral("resultadoCobro"));
    gc->addWidget(etiqueta(QStringLiteral("BOLETO")), 0, 0);
    gc->addWidget(textCobro_, 0, 1);
    gc->addWidget(botonCobrar_, 0, 2);
    gc->addWidget(resultadoCobro_, 1, 0, 1, 3);
    medio->addWidget(grupoCobro);
    medio->addStretch(1);
    columnas->addLayout(medio, 5);

    // Right: totals and sales per horse
    auto* derecha = new QVBoxLayout;
    auto* grupoTotales = new QGroupBox(QStringLiteral("TOTALES DEL DIA"));
    auto* gt = new QGridLayout(grupoTotales);
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
    auto* botones = new QHBoxLayout;
    auto* buscar = new QPushButton(QStringLiteral("Actualizar"));
    buscar->setObjectName(QStringLiteral("bton_buscar"));
    auto* resumen = new QPushButton(QStringLiteral("Resumen"));
    resumen->setObjectName(QStringLiteral("Bton_ImprimirRV"));
    auto* cuadre = new QPushButton(QStringLiteral("Cuadre Final"));
    cuadre->setObjectName(QStringLiteral("boton_cuadrefinal"));
    for (QPushButton* b : {buscar, resumen, cuadre}) {
        b->setFocusPolicy(Qt::NoFocus);
        botones->addWidget(b);
    }
    gt->addLayout(botones, 6, 0, 1, 2);
    derecha->addWidget(grupoTotales);
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
    statusBar()->showMessage(
        QStringLiteral("Enter: siguiente / vender    F2: venta    F5: cobro    F9: reimprimir    Esc: cancelar"));

    // Keyboard flow
    ordenTabulacion({textCarrera_, textCaballo_, textCliente_, textMonto_, botonProcesar_, textCobro_, botonCobrar_});
    EnterMovesOn::install(textCarrera_);
    EnterMovesOn::install(textCaballo_);
    EnterMovesOn::install(textCliente_);
    enterEjecuta(textMonto_, [this] { Boton_Procesar_Click(); });
    enterEjecuta(textClave_, [this] { Text_Clave_Enter(); });
    enterEjecuta(textCobro_, [this] { Text_boletoCobro_Enter(); });

    connect(botonProcesar_, &QPushButton::clicked, this, &Form_Venta_WIN::Boton_Procesar_Click);
    connect(botonCobrar_, &QPushButton::clicked, this, &Form_Venta_WIN::Boton_Cobrar_Boleto2_Click);
    connect(buscar, &QPushButton::clicked, this, &Form_Venta_WIN::bton_buscar_Click);
    connect(resumen, &QPushButton::clicked, this, &Form_Venta_WIN::imprimirResumen);
    connect(cuadre, &QPushButton::clicked, this, &Form_Venta_WIN::cuadreFinal);
    connect(textCarrera_, &QLineEdit::textChanged, this, [this] { cargarCorredores(); });
    connect(textCaballo_, &QLineEdit::textChanged, this, [this] { mostrarNombreCaballo(); });
    connect(textCobro_, &QLineEdit::textEdited, this, [this] {
        botonCobrar_->setEnabled(false);
        resultadoCobro_->clear();
    });

    // Window-wide keys: they reach the window whichever box has the focus (Esc
    // too, through teclaEscape).
    new QShortcut(QKeySequence(Qt::Key_F2), this, [this] { textCaballo_->setFocus(); });
    new QShortcut(QKeySequence(Qt::Key_F5), this, [this] { limpiarCobro(); });

    reloj_ = new QTimer(this);
    reloj_->setInterval(15000);
    connect(reloj_, &QTimer::timeout, this, [this] { cargarCarreras(); });
    reloj_->start();
}

void Form_Venta_WIN::mostrarUnidad() {
    const bool unidades = logica_.unidad() == UnidadVenta::Ganadores;
    accionGanadores_->setChecked(unidades);
    accionBolivares_->setChecked(!unidades);
    accionBolivares_->setText(ctx_.session.enDolares() ? QStringLiteral("Jugada en $") : QStringLiteral("Jugada en Bs"));
    etiquetaUnidad_->setText(unidades ? QStringLiteral("GANADORES") : logica_.etiquetaMoneda());
}

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

void Form_Venta_WIN::mostrarNombreCaballo() {
    const std::optional<long long> n = leerEntero(textCaballo_->text());
    QString nombre;
    if (n)
        for (const auto& c : corredores_)
            if (c.numero == *n) nombre = c.retirado ? QStringLiteral("RETIRADO") : c.nombre;
    nombreCaballo_->setText(nombre);
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
        textMonto_->setFocus();
        textMonto_->selectAll();
        return;
    }
    vendido(venta.boleto);
}

void Form_Venta_WIN::vendido(const VentaGanadores::Boleto& b) {
    ultimoBoleto_->setText(QStringLiteral("ÚLTIMO BOLETO  %1   C: %2   CAB: (%3) %4\n%5 Ganadores   %6%7")
                               .arg(b.codigo)
                               .arg(b.carrera)
                               .arg(b.caballo)
                               .arg(b.nombreCaballo, textoUnidades(b.ganadores), logica_.montoPantalla(b.costo),
                                    b.conClave ? QStringLiteral("   (CLAVE)") : QString()));
    LIMPIAR();
    bton_buscar_Click();
}

void Form_Venta_WIN::Text_Clave_Enter() {
    const QString clave = textClave_->text();
    MostrarFrameClave(false);
    const auto venta = intentar([&] { return logica_.ventaConClave(clave); }).value_or(VentaGanadores::Venta());
    if (venta.resultado == VentaGanadores::Resultado::Vendido) {
        vendido(venta.boleto);
    } else {
        textMonto_->setFocus();
    }
}

void Form_Venta_WIN::Text_boletoCobro_Enter() {
    const auto c = intentar([this] { return logica_.buscarBoletoCobro(textCobro_->text()); })
                       .value_or(VentaGanadores::Consulta());
    if (!c.pagable) {
        limpiarCobro();
        return;
    }
    resultadoCobro_->setText(c.mensaje + QStringLiteral("   ") + formatoMonto(c.monto, logica_.enDolares()));
    botonCobrar_->setEnabled(true);
    botonCobrar_->setFocus();
}

void Form_Venta_WIN::Boton_Cobrar_Boleto2_Click() {
    const auto pedido = logica_.boletoPorCobrar();
    const bool pagado = proteger([this] { return logica_.cobrarBoleto(); });
    limpiarCobro();
    if (pagado && pedido)
        resultadoCobro_->setText(QStringLiteral("BOLETO %1 PAGADO: %2")
                                     .arg(pedido->codigo, formatoMonto(pedido->monto, logica_.enDolares())));
    bton_buscar_Click();
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
}

void Form_Venta_WIN::anular() {
    if (proteger([this] { return logica_.anularBoleto(); })) bton_buscar_Click();
}

void Form_Venta_WIN::imprimirResumen() {
    const auto desde = ctx_.dialogs.ask(kTituloResumen, QStringLiteral("DESDE LA CARRERA (vacío o 0: TODAS)"));
    if (!desde) return;
    const long long primera = leerEntero(*desde).value_or(0);
    long long ultima = primera;
    if (primera > 0) {
        const auto hasta = ctx_.dialogs.ask(kTituloResumen, QStringLiteral("HASTA LA CARRERA"), *desde);
        if (!hasta) return;
        ultima = leerEntero(*hasta).value_or(0);
        if (ultima <= 0) ultima = primera;
    }
    proteger([&] { return logica_.imprimirResumen(primera, ultima); });
}

void Form_Venta_WIN::cuadreFinal() {
    bton_buscar_Click();
    proteger([this] { return logica_.imprimirResumen(0, 0); });
}

void Form_Venta_WIN::Escape() {
    if (frameClave_->isVisible()) {
        logica_.cancelarClave();
        MostrarFrameClave(false);
        textMonto_->setFocus();
    } else if (textCobro_->hasFocus() || botonCobrar_->hasFocus()) {
        limpiarCobro();
    } else {
        LIMPIAR();
    }
}

}  // namespace hipico
