#include "sales/Form_BoletosTaquilla.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/Teclado.h"
#include "sales/Tickets.h"
#include "sales/VentaGanadores.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

namespace hipico {

Form_BoletosTaquilla::Form_BoletosTaquilla(Context& ctx, VentaGanadores& venta, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_BoletosTaquilla"), QStringLiteral("BOLETOS DEL DÍA DE LA TAQUILLA")),
      venta_(venta) {
    grilla_ = new QTableWidget(0, 7, this);
    prepararGrilla(grilla_, QStringLiteral("Grilla"));
    grilla_->setHorizontalHeaderLabels({QStringLiteral(" BOLETO "), QStringLiteral(" HORA "), QStringLiteral(" CAR "),
                                        QStringLiteral(" CABALLO "), QStringLiteral(" GANAD "),
                                        QStringLiteral(" MONTO "), QStringLiteral(" ESTATUS ")});
    grilla_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    grilla_->horizontalHeader()->setSectionResizeMode(3, QHeaderView::Stretch);

    auto* copiaBoton = boton(QStringLiteral("Copia (F9)"), "Boton_Copia", this);
    auto* anularBoton = boton(QStringLiteral("Anular (F8)"), "Boton_Anular", this);
    auto* cerrar = boton(QStringLiteral("Cerrar (Esc)"), "Boton_Cerrar", this);
    for (QPushButton* b : {copiaBoton, anularBoton, cerrar}) b->setFocusPolicy(Qt::NoFocus);
    auto* botones = new QHBoxLayout;
    botones->addWidget(copiaBoton);
    botones->addWidget(anularBoton);
    botones->addStretch(1);
    botones->addWidget(cerrar);

    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(new QLabel(QStringLiteral("Los últimos boletos de esta taquilla, del más reciente al más antiguo")));
    raiz->addWidget(grilla_, 1);
    raiz->addLayout(botones);

    enterEjecuta(grilla_, [this] { copia(); });
    new QShortcut(QKeySequence(Qt::Key_F9), this, [this] { copia(); });
    new QShortcut(QKeySequence(Qt::Key_F8), this, [this] { anular(); });
    new QShortcut(QKeySequence(Qt::Key_Delete), this, [this] { anular(); });
    new QShortcut(QKeySequence(Qt::Key_F5), this, [this] { cargar(); });
    connect(copiaBoton, &QPushButton::clicked, this, &Form_BoletosTaquilla::copia);
    connect(anularBoton, &QPushButton::clicked, this, &Form_BoletosTaquilla::anular);
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);

    resize(760, 460);
    primerFoco(grilla_);
    cargar();
}

void Form_BoletosTaquilla::cargar() {
    const int antes = grilla_->currentRow();
    if (!proteger([this] { boletos_ = venta_.boletosDelDia(); })) return;
    const bool dolares = ctx_.session.enDolares();
    grilla_->setRowCount(0);
    for (const BoletoDia& b : boletos_) {
        const int r = grilla_->rowCount();
        grilla_->insertRow(r);
        const QStringList celdas{b.codigo,
                                 b.hora,
                                 QString::number(b.carrera),
                                 QStringLiteral("(%1) %2").arg(b.caballo).arg(b.nombreCaballo),
                                 textoUnidades(b.ganadores),
                                 formatoMonto(b.costo, dolares),
                                 textoEstatus(b.estatus)};
        for (int c = 0; c < celdas.size(); ++c) {
            auto* item = new QTableWidgetItem(celdas[c]);
            if (c == 2 || c == 4 || c == 5) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (b.estatus == Estatus::Anulado) item->setForeground(QColor(150, 150, 150));
            grilla_->setItem(r, c, item);
        }
    }
    if (grilla_->rowCount() > 0) grilla_->selectRow(std::clamp(antes, 0, grilla_->rowCount() - 1));
}

const BoletoDia* Form_BoletosTaquilla::elegido() const {
    const int r = grilla_->currentRow();
    return r >= 0 && r < boletos_.size() ? &boletos_[r] : nullptr;
}

void Form_BoletosTaquilla::copia() {
    if (const BoletoDia* b = elegido()) {
        const long long numero = b->numero;
        proteger([&] { return venta_.reimprimir(numero); });
    }
    grilla_->setFocus();
}

void Form_BoletosTaquilla::anular() {
    if (const BoletoDia* b = elegido()) {
        const long long numero = b->numero;
        if (proteger([&] { return venta_.anularBoleto(numero); })) cargar();
    }
    grilla_->setFocus();
}

}  // namespace hipico
