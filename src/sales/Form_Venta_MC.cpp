#include "sales/Form_Venta_MC.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/Teclado.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace hipico {

namespace {

QLabel* rotulo(const QString& texto) {
    auto* l = new QLabel(texto);
    l->setProperty("class", "campo");
    return l;
}

}  // namespace

Form_Venta_MC::Form_Venta_MC(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("form_Venta_MC"), QStringLiteral("VENTA MACUARE")), logica_(ctx) {
    auto* encabezado = new QLabel(QStringLiteral("VENTA MACUARE"));
    encabezado->setObjectName(QStringLiteral("encabezado"));
    estado_ = new QLabel;
    estado_->setObjectName(QStringLiteral("Label_Estado"));
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(encabezado, 1);
    arriba->addWidget(estado_);

    // The seven legs: Enter moves from one to the next, then to the amount.
    auto* venta = new QGroupBox(QStringLiteral("JUGADA"));
    auto* g = new QGridLayout(venta);
    for (int i = 0; i < kPiernas; ++i) {
        g->addWidget(rotulo(QStringLiteral("C%1").arg(i + 1)), 0, i, Qt::AlignHCenter);
        auto* c = caja(QStringLiteral("Text_datos%1").arg(i), nullptr, 2, SoloNumeros);
        c->setMinimumWidth(50);
        g->setColumnStretch(i, 1);
        c->setAlignment(Qt::AlignCenter);
        piernas_ << c;
        g->addWidget(c, 1, i);
        auto* carrera = new QLabel;
        carrera->setObjectName(QStringLiteral("carrera%1").arg(i + 1));
        carrera->setAlignment(Qt::AlignHCenter);
        carreras_ << carrera;
        g->addWidget(carrera, 2, i);
    }
    monto_ = caja(QStringLiteral("Text_monto"), nullptr, 12, SoloNumerosComa);
    veces_ = caja(QStringLiteral("Text_veces"), nullptr, 4, SoloNumeros);
    veces_->setText(QStringLiteral("1"));
    nombre_ = caja(QStringLiteral("Text_nombre"), nullptr, 100);
    auto* agregar = boton(QStringLiteral("AGREGAR"), QStringLiteral("Boton_Agregar"));
    g->addWidget(rotulo(QStringLiteral("MONTO")), 3, 0, 1, 2);
    g->addWidget(monto_, 4, 0, 1, 2);
    g->addWidget(rotulo(QStringLiteral("VECES")), 3, 2);
    g->addWidget(veces_, 4, 2);
    g->addWidget(rotulo(QStringLiteral("NOMBRE")), 3, 3, 1, 3);
    g->addWidget(nombre_, 4, 3, 1, 3);
    g->addWidget(agregar, 4, 6);
    for (int i = 0; i + 1 < kPiernas; ++i) enterVaA(piernas_[i], piernas_[i + 1]);
    enterVaA(piernas_.last(), monto_);
    enterVaA(monto_, veces_);
    enterVaA(veces_, nombre_);
    enterEjecuta(nombre_, [this] { Boton_Agregar_Click(); });
    connect(agregar, &QPushButton::clicked, this, [this] { Boton_Agregar_Click(); });
    ultimo_ = new QLabel;
    ultimo_->setObjectName(QStringLiteral("ultimoBoleto"));
    ultimo_->setWordWrap(true);

    // Payment and void by code.
    auto* caja2 = new QGroupBox(QStringLiteral("COBRO Y ANULACION"));
    auto* c2 = new QGridLayout(caja2);
    cobro_ = caja(QStringLiteral("Text_boletoCobro"), nullptr, 25, SoloNumeros);
    cobrar_ = boton(QStringLiteral("COBRAR"), QStringLiteral("Boton_Cobrar_Boleto2"));
    cobrar_->setEnabled(false);
    resultadoCobro_ = new QLabel;
    resultadoCobro_->setObjectName(QStringLiteral("resultadoCobro"));
    anular_ = caja(QStringLiteral("Text_nu_ba"), nullptr, 25, SoloNumeros);
    c2->addWidget(rotulo(QStringLiteral("BOLETO A COBRAR (F5)")), 0, 0);
    c2->addWidget(cobro_, 1, 0);
    c2->addWidget(cobrar_, 1, 1);
    c2->addWidget(resultadoCobro_, 2, 0, 1, 2);
    c2->addWidget(rotulo(QStringLiteral("BOLETO A ANULAR (F6)")), 3, 0);
    c2->addWidget(anular_, 4, 0);
    enterEjecuta(cobro_, [this] { Text_boletoCobro_Enter(); });
    enterEjecuta(anular_, [this] { Text_nu_ba_Enter(); });
    connect(cobrar_, &QPushButton::clicked, this, [this] { Boton_Cobrar_Boleto2_Click(); });

    // The day's list and totals.
    lista_ = new QTableWidget(0, encabezadosListaMacuare().size());
    prepararGrilla(lista_, QStringLiteral("Lista"), AnchoColumnas::Repartido);
    lista_->setHorizontalHeaderLabels(encabezadosListaMacuare());
    lista_->setFocusPolicy(Qt::NoFocus);
    totales_ = new QLabel;
    totales_->setObjectName(QStringLiteral("totales"));
    totales_->setProperty("class", "total");
    auto* teclas = new QLabel(QStringLiteral("Enter: siguiente / vender   F5: cobrar   F6: anular   F7: resumen   "
                                             "F8: lista del día   F9: copia   Esc: limpiar"));
    teclas->setWordWrap(true);
    teclas->setObjectName(QStringLiteral("teclas"));

    auto* medio = new QHBoxLayout;
    auto* izquierda = new QVBoxLayout;
    izquierda->addWidget(venta);
    izquierda->addWidget(ultimo_);
    medio->addLayout(izquierda, 3);
    medio->addWidget(caja2, 2);
    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(arriba);
    raiz->addLayout(medio);
    raiz->addWidget(lista_, 1);
    raiz->addWidget(totales_);
    raiz->addWidget(teclas);
    primerFoco(piernas_.first());

    proteger([this] {
        logica_.cargar();
        const QVector<long long> carreras = logica_.piernas();
        for (int i = 0; i < kPiernas && i < carreras.size(); ++i)
            carreras_[i]->setText(QStringLiteral("CARRERA ") + QString::number(carreras[i]));
        combinaciones_ = logica_.combinacionesDelDia();
    });
    mostrarEstado();
    Totalizar_Dia();
}

void Form_Venta_MC::mostrarEstado() {
    const auto e = intentar([this] { return logica_.estado(); });
    estado_->setText(e.value_or(QString()));
    estado_->setVisible(e && !e->isEmpty());
}

void Form_Venta_MC::LIMPIAR() {
    for (QLineEdit* c : piernas_) c->clear();
    monto_->clear();
    veces_->setText(QStringLiteral("1"));
    nombre_->clear();
    cobro_->clear();
    anular_->clear();
    resultadoCobro_->clear();
    cobrar_->setEnabled(false);
    piernas_.first()->setFocus();
}

void Form_Venta_MC::Boton_Agregar_Click() {
    PedidoMacuare p;
    for (QLineEdit* c : piernas_) p.piernas << c->text();
    p.monto = monto_->text();
    p.veces = veces_->text();
    p.nombre = nombre_->text();
    const auto r = intentar([&] { return logica_.vender(p); });
    mostrarEstado();
    if (!r) return;
    if (!r->vendido) {
        // The cursor goes to the box at fault.
        if (r->pierna >= 0) {
            piernas_[r->pierna]->setFocus();
            piernas_[r->pierna]->selectAll();
        } else {
            monto_->setFocus();
            monto_->selectAll();
        }
        return;
    }
    const BoletoMacuareVendido& b = r->boleto;
    ultimo_->setText(QStringLiteral("ULTIMO BOLETO: %1   %2   VECES %3   %4")
                         .arg(b.codigo, textoCombinacion(b.v))
                         .arg(b.veces)
                         .arg(logica_.montoPantalla(b.monto)));
    for (QLineEdit* c : piernas_) c->clear();
    monto_->clear();
    veces_->setText(QStringLiteral("1"));
    nombre_->clear();
    piernas_.first()->setFocus();
    Totalizar_Dia();
}

void Form_Venta_MC::Text_boletoCobro_Enter() {
    const auto c = intentar([this] { return logica_.buscarBoletoCobro(cobro_->text()); });
    const bool pagable = c && c->pagable;
    cobrar_->setEnabled(pagable);
    resultadoCobro_->setText(pagable ? c->mensaje + QStringLiteral("  ") + logica_.montoPantalla(c->monto) : QString());
    if (pagable)
        cobrar_->setFocus();
    else
        cobro_->selectAll();
}

void Form_Venta_MC::Boton_Cobrar_Boleto2_Click() {
    proteger([this] { logica_.cobrarBoleto(); });
    cobrar_->setEnabled(false);
    resultadoCobro_->clear();
    cobro_->clear();
    piernas_.first()->setFocus();
    Totalizar_Dia();
}

void Form_Venta_MC::Text_nu_ba_Enter() {
    proteger([this] { logica_.anularPorCodigo(anular_->text()); });
    anular_->clear();
    piernas_.first()->setFocus();
    Totalizar_Dia();
}

void Form_Venta_MC::Command19_Click() {
    const auto lineas = intentar([this] { return logica_.Command19(); });
    if (!lineas) return;
    lista_->setRowCount(lineas->size());
    for (int f = 0; f < lineas->size(); ++f) {
        const BoletoMacuareVendido& l = (*lineas)[f];
        QStringList celdas{l.codigo};
        for (long long v : l.v) celdas << QString::number(v);
        celdas << logica_.montoPantalla(l.monto) << QString::number(l.veces) << l.grupo;
        for (int c = 0; c < celdas.size(); ++c) lista_->setItem(f, c, new QTableWidgetItem(celdas[c]));
    }
}

void Form_Venta_MC::Bton_ImprimirRV_Click() { proteger([this] { logica_.imprimirResumen(); }); }

void Form_Venta_MC::Totalizar_Dia() {
    const auto t = intentar([this] { return logica_.Totalizar_Dia(); });
    if (!t) return;
    totales_->setText(QStringLiteral("VENTA: %1 (%2)   PAGADO: %3 (%4)   POR PAGAR: %5 (%6)\n"
                                     "ANULADOS: %7   SALDO: %8   COMBINACIONES: %9")
                          .arg(logica_.montoPantalla(t->venta))
                          .arg(t->cantVenta)
                          .arg(logica_.montoPantalla(t->cobrado))
                          .arg(t->cantCobrado)
                          .arg(logica_.montoPantalla(t->porCobrar))
                          .arg(t->cantPorCobrar)
                          .arg(t->anulados)
                          .arg(logica_.montoPantalla(t->saldo()))
                          .arg(combinaciones_));
    Command19_Click();
}

void Form_Venta_MC::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_F5: cobro_->setFocus(); return;
    case Qt::Key_F6: anular_->setFocus(); return;
    case Qt::Key_F7: Bton_ImprimirRV_Click(); return;
    case Qt::Key_F8: Command19_Click(); return;
    case Qt::Key_F9: proteger([this] { logica_.reimprimir(); }); return;
    default: Ventana::keyPressEvent(event);
    }
}

}  // namespace hipico
