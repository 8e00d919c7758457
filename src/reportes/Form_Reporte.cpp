#include "reportes/Form_Reporte.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace hipico {

Form_Reporte::Form_Reporte(Context& ctx, const DescripcionReporte& d, QWidget* parent)
    : Ventana(ctx, parent, d.nombre, d.titulo, Centrado::SegunAjuste), generador_(ctx, d) {
    const QDate hoy = desdeFechaSql(ctx.session.fecha).isValid() ? desdeFechaSql(ctx.session.fecha) : ctx.clock.today();
    auto* campos = new QFormLayout;
    desde_ = selectorFecha(QStringLiteral("DTPicker1"));
    // A range starts on the week that ends on the working day.
    desde_->setDate(d.rango ? hoy.addDays(-6) : hoy);
    campos->addRow(d.rango ? QStringLiteral("Desde") : QStringLiteral("Fecha"), desde_);
    QList<QWidget*> orden{desde_};
    if (d.rango) {
        hasta_ = selectorFecha(QStringLiteral("DTPicker2"));
        hasta_->setDate(hoy);
        campos->addRow(QStringLiteral("Hasta"), hasta_);
        orden << hasta_;
    }
    if (d.carreras) {
        carreraDesde_ = caja(QStringLiteral("Text_Desde"), nullptr, 2, SoloNumeros, 60);
        carreraHasta_ = caja(QStringLiteral("Text_Hasta"), nullptr, 2, SoloNumeros, 60);
        auto* carreras = new QHBoxLayout;
        carreras->addWidget(carreraDesde_);
        carreras->addWidget(new QLabel(QStringLiteral("hasta la")));
        carreras->addWidget(carreraHasta_);
        carreras->addStretch(1);
        campos->addRow(QStringLiteral("Carreras: de la"), carreras);
        orden << carreraDesde_ << carreraHasta_;
    }
    if (d.grupos || d.subgrupos) {
        alcance_ = new QComboBox;
        alcance_->setObjectName(QStringLiteral("Combo_Grupo"));
        alcances_ = intentar([this] { return generador_.alcances(); }).value_or(QVector<Alcance>());
        for (const Alcance& a : std::as_const(alcances_)) alcance_->addItem(a.texto());
        campos->addRow(d.grupos ? QStringLiteral("Grupo") : QStringLiteral("Subgrupo"), alcance_);
        orden << alcance_;
    }
    if (!d.opcion.isEmpty()) {
        opcion_ = new QCheckBox(d.opcion);
        opcion_->setObjectName(QStringLiteral("Check_Opcion"));
        campos->addRow(QString(), opcion_);
        orden << opcion_;
    }
    for (QWidget* w : orden) EnterMovesOn::install(w);

    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    QPushButton* reporte = boton(QStringLiteral("Reporte"), QStringLiteral("Boton_Reporte"));
    connect(reporte, &QPushButton::clicked, this, [this] { Reporte_Click(); });
    botones->addWidget(reporte);
    if (d.exportaTexto) {
        QPushButton* txt = boton(QStringLiteral("Exportar Txt"), QStringLiteral("Boton_Txt"));
        connect(txt, &QPushButton::clicked, this, [this] { ExportarTxt_Click(); });
        botones->addWidget(txt);
    }
    QPushButton* salir = boton(QStringLiteral("Salir"), QStringLiteral("Boton_Salir"));
    connect(salir, &QPushButton::clicked, this, &QWidget::close);
    botones->addWidget(salir);

    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(campos);
    raiz->addStretch(1);
    raiz->addLayout(botones);
    primerFoco(desde_);
    resize(460, 80 + 32 * static_cast<int>(orden.size()));
}

Peticion Form_Reporte::peticion() const {
    Peticion p;
    p.desde = desde_->date();
    p.hasta = hasta_ ? hasta_->date() : p.desde;
    if (carreraDesde_) {
        p.carreraDesde = carreraDesde_->text();
        p.carreraHasta = carreraHasta_->text();
    }
    if (alcance_ && alcance_->currentIndex() >= 0 && alcance_->currentIndex() < alcances_.size())
        p.alcance = alcances_[alcance_->currentIndex()];
    p.opcion = opcion_ && opcion_->isChecked();
    return p;
}

QWidget* Form_Reporte::Reporte_Click() {
    const auto apertura = intentar([this] { return generador_.generar(peticion()); });
    if (!apertura || !*apertura) return nullptr;
    const auto& a = **apertura;
    return abrirReporte(ctx_, a.tipo, a.parametros.value_or(ParametrosReporte{}), this);
}

bool Form_Reporte::ExportarTxt_Click(const QString& nombre) {
    const QString archivo =
        nombre.isEmpty() ? QFileDialog::getSaveFileName(this, windowTitle(), QString(), kFiltroTexto.section('|', 0, 0) +
                                                                                           QStringLiteral(" (*.txt)"))
                         : nombre;
    if (archivo.isEmpty()) return false;
    return intentar([&] { return generador_.exportarTexto(peticion(), archivo); }).value_or(false);
}

}  // namespace hipico
