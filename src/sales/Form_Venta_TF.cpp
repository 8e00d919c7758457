#include "sales/Form_Venta_TF.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

// A ticket code: prefix, month, day and at least two digits of its number.
constexpr int kLargoMinimoCodigo = 6;

}  // namespace

Form_Venta_TF::Form_Venta_TF(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Venta_TF"), QStringLiteral("VENTA DE TABLA FIJA")), logica_(ctx) {
    construir();
    long long carrera = 0;
    const bool cargada = proteger([&] {
        logica_.cargar();
        carrera = logica_.carreraDelGrupo();
    });
    if (cargada) {
        if (carrera > 0) textCarrera_->setText(QString::number(carrera));
        bton_buscar_Click();
    }
    resize(1100, 660);
    primerFoco(carrera > 0 ? textCaballo_ : textCarrera_);
}

void Form_Venta_TF::construir() {
    const Session& s = ctx_.session;
    QMenu* opciones = menuBar()->addMenu(QStringLiteral("&Opciones"));
    auto comando = [&](const QString& texto, const QKeySequence& tecla, auto&& fn) {
        opciones->addAction(texto, this, fn)->setShortcut(tecla);
    };
    comando(QStringLiteral("Anular Último Boleto"), QKeySequence(Qt::Key_F8), [this] { Anulacion_tf(); });
    comando(QStringLiteral("Resumen de Ventas"), QKeySequence(Qt::Key_F7), [this] { imprimirResumen(); });
    opciones->addSeparator();
    opciones->addAction(QStringLiteral("Salir  (Ctrl+F4)"), this, &QWidget::close);

    auto* fondo = new QWidget;
    fondo->setObjectName(QStringLiteral("fondo"));
    auto* raiz = new QVBoxLayout(fondo);
    raiz->setContentsMargins(6, 6, 6, 6);
    encabezado_ = new QLabel(QStringLiteral("VENTA DE TABLA FIJA   ·   CENTRO HIPICO %1   ·   TAQUILLA %2   ·   %3")
                                 .arg(s.ch, s.usuario, fechaVista(s.fecha)));
    encabezado_->setObjectName(QStringLiteral("encabezado"));
    encabezado_->setWordWrap(true);
    raiz->addWidget(encabezado_);
    auto* columnas = new QHBoxLayout;
    raiz->addLayout(columnas, 1);

    // Left: the race's horses, their table price and what this centre sold.
    auto* grupoCaballos = new QGroupBox(QStringLiteral("CABALLOS DE LA CARRERA"));
    auto* gc = new QVBoxLayout(grupoCaballos);
    caballos_ = new QTableWidget(0, 4);
    caballos_->setObjectName(QStringLiteral("caballos"));
    caballos_->setHorizontalHeaderLabels({QStringLiteral("CAB"), QStringLiteral("NOMBRE"), QStringLiteral("VALOR"),
                                          QStringLiteral("TABLAS")});
    caballos_->verticalHeader()->hide();
    caballos_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    caballos_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    caballos_->setFocusPolicy(Qt::NoFocus);
    gc->addWidget(caballos_);
    columnas->addWidget(grupoCaballos, 5);

    // Right: sale, last ticket, payment, totals.
    auto* derecha = new QVBoxLayout;
    auto* grupoVenta = new QGroupBox(QStringLiteral("VENTA"));
    auto* gv = new QGridLayout(grupoVenta);
    textCarrera_ = caja("Text_Carrera", nullptr, 3, SoloNumeros, 90);
    textCaballo_ = caja("Text_Caballo", nullptr, 2, SoloNumeros, 90);
    textTablas_ = caja("Text_Tablas", nullptr, 5, SoloNumeros, 120);
    gv->addWidget(etiqueta(QStringLiteral("CARRERA")), 0, 0);
    gv->addWidget(textCarrera_, 0, 1);
    gv->addWidget(etiqueta(QStringLiteral("CABALLO")), 1, 0);
    gv->addWidget(textCaballo_, 1, 1);
    gv->addWidget(etiqueta(QStringLiteral("TABLAS")), 2, 0);
    gv->addWidget(textTablas_, 2, 1);
    botonProcesar_ = boton(QStringLiteral("VENDER  (Enter)"), QStringLiteral("Boton_Procesar"));
    gv->addWidget(botonProcesar_, 3, 0, 1, 2);
    gv->setColumnStretch(1, 1);
    derecha->addWidget(grupoVenta);
    ultimoBoleto_ = new QLabel(QStringLiteral("Sin ventas en esta sesión"));
    ultimoBoleto_->setObjectName(QStringLiteral("ultimoBoleto"));
    ultimoBoleto_->setWordWrap(true);
    derecha->addWidget(ultimoBoleto_);

    auto* grupoCobro = new QGroupBox(QStringLiteral("COBRO DE TABLAS"));
    auto* gb = new QGridLayout(grupoCobro);
    textCobro_ = caja("Text_boletoCobro", nullptr, 25);
    botonCobrar_ = boton(QStringLiteral("COBRAR"), QStringLiteral("Boton_Cobrar_Boleto2"));
    botonCobrar_->setEnabled(false);
    resultadoCobro_ = new QLabel;
    resultadoCobro_->setObjectName(QStringLiteral("resultadoCobro"));
    resultadoCobro_->setWordWrap(true);
    gb->addWidget(etiqueta(QStringLiteral("BOLETO")), 0, 0);
    gb->addWidget(textCobro_, 0, 1);
    gb->addWidget(botonCobrar_, 0, 2);
    gb->addWidget(resultadoCobro_, 1, 0, 1, 3);
    cobro_ = {textCobro_, botonCobrar_, resultadoCobro_};
    derecha->addWidget(grupoCobro);

    auto* grupoTotales = new QGroupBox(QStringLiteral("TOTALES DEL DÍA"));
    auto* gt = new QVBoxLayout(grupoTotales);
    totales_ = etiqueta(QString(), "total");
    totales_->setObjectName(QStringLiteral("totales"));
    gt->addWidget(totales_);
    derecha->addWidget(grupoTotales);
    derecha->addStretch(1);
    columnas->addLayout(derecha, 4);
    setCentralWidget(fondo);

    auto* ayuda = new QLabel(QStringLiteral("Enter: siguiente / vender   F2: venta   F5: cobro   F7: resumen   "
                                            "F8: anular último   Esc: limpiar   Ctrl+F4: cerrar"));
    ayuda->setObjectName(QStringLiteral("teclas"));
    statusBar()->addWidget(ayuda, 1);

    ordenTabulacion({textCarrera_, textCaballo_, textTablas_, botonProcesar_, textCobro_, botonCobrar_});
    EnterMovesOn::install(textCarrera_);
    EnterMovesOn::install(textCaballo_);
    enterEjecuta(textTablas_, [this] { Boton_Procesar_Click(); });
    enterEjecuta(textCobro_, [this] { Text_boletoCobro_Enter(); });
    connect(botonProcesar_, &QPushButton::clicked, this, &Form_Venta_TF::Boton_Procesar_Click);
    connect(botonCobrar_, &QPushButton::clicked, this, &Form_Venta_TF::Boton_Cobrar_Boleto2_Click);
    connect(textCarrera_, &QLineEdit::textChanged, this, [this] { enSegundoPlano([this] { mostrarCaballos(); }); });
    connect(textCobro_, &QLineEdit::textEdited, this, [this] {
        botonCobrar_->setEnabled(false);
        resultadoCobro_->clear();
    });
    new QShortcut(QKeySequence(Qt::Key_F2), this, [this] { textCaballo_->setFocus(); });
    new QShortcut(QKeySequence(Qt::Key_F5), this, [this] {
        textCobro_->clear();
        textCobro_->setFocus();
    });
    new LectorCodigos(this, kLargoMinimoCodigo, [this](const QString& c) {
        textCobro_->setText(c);
        Text_boletoCobro_Enter();
    });
    reloj_ = new QTimer(this);
    reloj_->setInterval(15000);
    connect(reloj_, &QTimer::timeout, this, [this] { enSegundoPlano([this] { mostrarCaballos(); }); });
    reloj_->start();
}

void Form_Venta_TF::mostrarCaballos() {
    const long long carrera = leerEntero(textCarrera_->text()).value_or(0);
    const auto lista = carrera > 0 ? logica_.caballos(carrera) : QVector<CaballoTablaFija>();
    caballos_->setRowCount(lista.size());
    for (int i = 0; i < lista.size(); ++i) {
        const CaballoTablaFija& c = lista[i];
        const QStringList celdas{QString::number(c.numero),
                                 c.retirado ? QStringLiteral(" R  E  T  I  R  A  D  O ") : c.nombre,
                                 formatoMonto(c.valor, logica_.enDolares()), textoUnidades(c.tablas)};
        for (int k = 0; k < celdas.size(); ++k) {
            auto* item = new QTableWidgetItem(celdas[k]);
            if (k != 1) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (c.retirado) item->setForeground(QColor(192, 0, 0));
            caballos_->setItem(i, k, item);
        }
    }
}

void Form_Venta_TF::mostrarTotales() {
    const TotalesDia t = logica_.Totalizar_Dia();
    const bool d = logica_.enDolares();
    totales_->setText(QStringLiteral("VENTA : %1  (%2)\nPREMIOS PAGADOS : %3  (%4)\nPOR PAGAR : %5  (%6)\n"
                                     "SALDO : %7\nMONTO EN CAJA : %8\nBOLETOS ANULADOS : %9")
                          .arg(formatoMonto(t.venta, d))
                          .arg(t.cantVenta)
                          .arg(formatoMonto(t.cobrado, d))
                          .arg(t.cantCobrado)
                          .arg(formatoMonto(t.porCobrar, d))
                          .arg(t.cantPorCobrar)
                          .arg(formatoMonto(t.saldo(), d), formatoMonto(t.caja(), d))
                          .arg(t.anulados));
}

void Form_Venta_TF::mostrarUltimo() {
    const auto& b = logica_.ultimoBoleto();
    if (!b) {
        ultimoBoleto_->setText(QStringLiteral("Sin ventas en esta sesión"));
        return;
    }
    ultimoBoleto_->setText(QStringLiteral("ÚLTIMO BOLETO  %1   C: %2   CAB: (%3) %4\n%5 TABLAS   %6")
                               .arg(b->codigo)
                               .arg(b->carrera)
                               .arg(b->caballo)
                               .arg(b->nombreCaballo)
                               .arg(b->tablas)
                               .arg(formatoMonto(b->monto, logica_.enDolares())));
}

void Form_Venta_TF::LIMPIAR() {
    textCaballo_->clear();
    textTablas_->clear();
    textCaballo_->setFocus();
}

void Form_Venta_TF::Boton_Procesar_Click() {
    const auto venta =
        intentar([this] { return logica_.procesarVenta(textCarrera_->text(), textCaballo_->text(), textTablas_->text()); })
            .value_or(VentaTablaFija::Venta());
    if (venta.resultado == VentaTablaFija::Resultado::Vendido) {
        LIMPIAR();
        bton_buscar_Click();
        return;
    }
    // Declined or refused: what was typed stays, the tables selected for retyping.
    textTablas_->setFocus();
    textTablas_->selectAll();
}

void Form_Venta_TF::Text_boletoCobro_Enter() { cobro_.consultar(ctx_, objectName(), logica_); }

void Form_Venta_TF::Boton_Cobrar_Boleto2_Click() {
    cobro_.cobrar(ctx_, objectName(), logica_);
    bton_buscar_Click();
    textCaballo_->setFocus();
}

void Form_Venta_TF::Anulacion_tf() {
    if (proteger([this] { return logica_.anularUltimo(); })) bton_buscar_Click();
    textCaballo_->setFocus();
}

void Form_Venta_TF::imprimirResumen() {
    proteger([this] { return logica_.imprimirResumen(0, 0); });
}

void Form_Venta_TF::bton_buscar_Click() {
    proteger([this] {
        mostrarTotales();
        mostrarCaballos();
        mostrarUltimo();
    });
}

}  // namespace hipico
