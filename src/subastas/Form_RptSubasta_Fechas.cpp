#include "subastas/Form_RptSubasta_Fechas.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace hipico {

Form_RptSubasta_Fechas::Form_RptSubasta_Fechas(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_RptSubasta_Fechas"), QStringLiteral("REPORTE DE SUBASTAS POR FECHAS"),
              Centrado::SegunAjuste),
      logica_(ctx) {
    desde_ = selectorFecha(QStringLiteral("desde"), this);
    hasta_ = selectorFecha(QStringLiteral("hasta"), this);
    const QDate hoy = desdeFechaSql(ctx.session.fecha).isValid() ? desdeFechaSql(ctx.session.fecha) : ctx.clock.today();
    desde_->setDate(hoy.addDays(-6));
    hasta_->setDate(hoy);
    grupo_ = new QComboBox(this);
    grupo_->setObjectName(QStringLiteral("grupo"));
    subgrupo_ = new QComboBox(this);
    subgrupo_->setObjectName(QStringLiteral("subgrupo"));
    subgrupo_->setMinimumWidth(140);
    auto* procesar = boton(QStringLiteral("Procesar"), QStringLiteral("procesar"), this);
    auto* imprimir = boton(QStringLiteral("Imprimir"), QStringLiteral("imprimir"), this);
    auto* reporte = boton(QStringLiteral("Reporte"), QStringLiteral("reporte"), this);
    tabla_ = new QTableWidget(this);
    tabla_->setObjectName(QStringLiteral("filas"));
    tabla_->setColumnCount(7);
    tabla_->setHorizontalHeaderLabels({QStringLiteral(" GRUPO "), QStringLiteral(" FECHA "), QStringLiteral(" VENTA "),
                                       QStringLiteral(" PREMIOS "), QStringLiteral(" POR PAGAR "),
                                       QStringLiteral(" GANADORES "), QStringLiteral(" REMATE ")});
    tabla_->verticalHeader()->hide();
    tabla_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabla_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabla_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    totales_ = new QLabel(this);
    totales_->setObjectName(QStringLiteral("totales"));

    auto* arriba = new QHBoxLayout;
    arriba->addWidget(new QLabel(QStringLiteral("Desde:"), this));
    arriba->addWidget(desde_);
    arriba->addWidget(new QLabel(QStringLiteral("Hasta:"), this));
    arriba->addWidget(hasta_);
    arriba->addWidget(new QLabel(QStringLiteral("Grupo:"), this));
    arriba->addWidget(grupo_);
    arriba->addWidget(new QLabel(QStringLiteral("Subgrupo:"), this));
    arriba->addWidget(subgrupo_);
    arriba->addWidget(procesar);
    arriba->addWidget(imprimir);
    arriba->addWidget(reporte);
    arriba->addStretch();
    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(arriba);
    raiz->addWidget(tabla_, 1);
    raiz->addWidget(totales_);
    resize(900, 480);

    enterVaA(desde_, hasta_);
    enterVaA(hasta_, grupo_);
    enterVaA(grupo_, procesar);
    enterPulsa(procesar);
    enterPulsa(imprimir);
    enterPulsa(reporte);
    primerFoco(desde_);
    connect(procesar, &QPushButton::clicked, this, &Form_RptSubasta_Fechas::procesar);
    connect(imprimir, &QPushButton::clicked, this, &Form_RptSubasta_Fechas::imprimir);
    connect(reporte, &QPushButton::clicked, this, &Form_RptSubasta_Fechas::reporte);

    proteger([this] {
        grupo_->addItems(logica_.grupos());
        subgrupo_->addItems(logica_.subgrupos());
    });
    subgrupo_->setVisible(logica_.eligeCualquierGrupo());
}

bool Form_RptSubasta_Fechas::procesar() {
    const auto filas = intentar([this] {
        return logica_.Procesar(desde_->date(), hasta_->date(), grupo_->currentText(), subgrupo_->currentText());
    });
    filas_ = filas && *filas ? **filas : QVector<RptSubastaFechas::Fila>();
    tabla_->setRowCount(static_cast<int>(filas_.size()));
    double ganadores = 0, remate = 0;
    for (int i = 0; i < filas_.size(); ++i) {
        const RptSubastaFechas::Fila& f = filas_[i];
        const QStringList celdas = {f.grupo,
                                    f.fecha,
                                    formatoDolar(f.venta),
                                    formatoDolar(f.premios),
                                    formatoDolar(f.porPagar),
                                    formatoDolar(f.ganadores),
                                    formatoDolar(f.remate)};
        for (int c = 0; c < celdas.size(); ++c) {
            auto* item = new QTableWidgetItem(celdas[c]);
            if (c >= 2) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            tabla_->setItem(i, c, item);
        }
        ganadores += f.ganadores;
        remate += f.remate;
    }
    totales_->setText(filas_.isEmpty() ? QString()
                                       : QStringLiteral("Total ganadores: %1    Total remate: %2")
                                             .arg(formatoDolar(ganadores), formatoDolar(remate)));
    return !filas_.isEmpty();
}

void Form_RptSubasta_Fechas::imprimir() {
    if (!procesar()) return;
    proteger([this] { logica_.Imprimir(filas_, desde_->date(), hasta_->date()); });
}

// The same rows on the report window (refilled first: a report is only as
// current as its last fill).
void Form_RptSubasta_Fechas::reporte() {
    if (procesar()) abrirReporte(ctx_, RptSubastaFechas::kReporte, {}, this);
}

}  // namespace hipico
