#include "sales/Form_RPT_CuadreTaqWIn.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace hipico {

Form_RPT_CuadreTaqWIn::Form_RPT_CuadreTaqWIn(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_RPT_CuadreTaqWIn"), QStringLiteral("CUADRE POR TAQUILLA - GANADORES"),
              Centrado::SegunAjuste),
      logica_(ctx) {
    fecha_ = selectorFecha(QStringLiteral("DTPicker1"));
    const QDate hoy = desdeFechaSql(ctx.session.fecha);
    fecha_->setDate(hoy.isValid() ? hoy : ctx.clock.today());
    grupo_ = new QComboBox;
    grupo_->setObjectName(QStringLiteral("Combo_Grupo"));
    const auto grupos = intentar([this] { return logica_.grupos(); });
    grupo_->addItems(grupos.value_or(QStringList()));
    auto* buscar = new QPushButton(QStringLiteral("Buscar"));
    buscar->setObjectName(QStringLiteral("Boton_Buscar"));
    buscar->setAutoDefault(true);

    auto* filtros = new QHBoxLayout;
    filtros->addWidget(new QLabel(QStringLiteral("Fecha")));
    filtros->addWidget(fecha_);
    filtros->addWidget(new QLabel(QStringLiteral("Grupo")));
    filtros->addWidget(grupo_);
    filtros->addWidget(buscar);
    // Printed: the booths' report on what the search wrote into rpt_resultadostaqs.
    auto* imprimir = boton(QStringLiteral("Imprimir"), QStringLiteral("Boton_Imprimir"));
    filtros->addWidget(imprimir);
    connect(imprimir, &QPushButton::clicked, this, [this] {
        const auto filas = logica_.buscar(fecha_->date(), grupo_->currentText());
        mostrar(filas);
        if (!filas.isEmpty()) abrirReporte(ctx_, 18, {}, this);
    });
    filtros->addStretch(1);

    grilla_ = new QTableWidget(0, 6);
    prepararGrilla(grilla_, QStringLiteral("Grilla"), AnchoColumnas::Repartido);
    grilla_->setHorizontalHeaderLabels({QStringLiteral(" TAQUILLA "), QStringLiteral(" FECHA "),
                                        QStringLiteral(" JUGADO "), QStringLiteral(" COBRADO "),
                                        QStringLiteral(" POR PAGAR "), QStringLiteral(" TOTAL ")});
    total_ = new QLabel;
    total_->setObjectName(QStringLiteral("totales"));

    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(filtros);
    raiz->addWidget(grilla_, 1);
    raiz->addWidget(total_);

    EnterMovesOn::install(fecha_);
    EnterMovesOn::install(grupo_);
    connect(buscar, &QPushButton::clicked, this, &Form_RPT_CuadreTaqWIn::Buscar_Click);
    primerFoco(fecha_);
    resize(820, 460);
    // The day's figures are there when the window opens.
    if (grupos) mostrar(logica_.buscar(fecha_->date(), grupo_->currentText(), false));
}

void Form_RPT_CuadreTaqWIn::Buscar_Click() {
    proteger([this] { mostrar(logica_.buscar(fecha_->date(), grupo_->currentText())); });
}

void Form_RPT_CuadreTaqWIn::mostrar(const QVector<CuadreTaquillas::Fila>& filas) {
    const bool dolares = ctx_.session.enDolares();
    grilla_->setRowCount(0);
    double jugado = 0, cobrado = 0, porPagar = 0, total = 0;
    for (const auto& f : filas) {
        const int r = grilla_->rowCount();
        grilla_->insertRow(r);
        const QStringList celdas{f.taquilla,
                                 f.fecha,
                                 formatoMonto(f.jugado, dolares),
                                 formatoMonto(f.cobrado, dolares),
                                 formatoMonto(f.porPagar, dolares),
                                 formatoMonto(f.total, dolares)};
        for (int c = 0; c < celdas.size(); ++c) {
            auto* item = new QTableWidgetItem(celdas[c]);
            if (c >= 2) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grilla_->setItem(r, c, item);
        }
        jugado += f.jugado;
        cobrado += f.cobrado;
        porPagar += f.porPagar;
        total += f.total;
    }
    total_->setText(filas.isEmpty() ? QString()
                                    : QStringLiteral("TOTALES   JUGADO %1   COBRADO %2   POR PAGAR %3   TOTAL %4")
                                          .arg(formatoMonto(jugado, dolares), formatoMonto(cobrado, dolares),
                                               formatoMonto(porPagar, dolares), formatoMonto(total, dolares)));
}

}  // namespace hipico
