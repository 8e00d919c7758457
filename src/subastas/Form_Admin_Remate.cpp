#include "subastas/Form_Admin_Remate.h"

#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace hipico {

Form_Admin_Remate::Form_Admin_Remate(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Admin_Remate"), QStringLiteral("GANADOR DE LA SUBASTA"),
              Centrado::SegunAjuste),
      logica_(ctx) {
    fecha_ = new QLabel(this);
    fecha_->setObjectName(QStringLiteral("fecha"));
    carrera_ = caja(QStringLiteral("carrera"), this, 2, SoloNumeros, 60);
    caballo_ = caja(QStringLiteral("caballo"), this, 2, SoloNumeros, 60);
    centro_ = new QComboBox(this);
    centro_->setObjectName(QStringLiteral("centro"));
    centro_->setMinimumWidth(180);
    auto* procesar = boton(QStringLiteral("Procesar"), QStringLiteral("procesar"), this);
    resultado_ = new QLabel(this);
    resultado_->setObjectName(QStringLiteral("resultado"));
    resultado_->setWordWrap(true);

    auto* campos = new QFormLayout;
    campos->addRow(QStringLiteral("Fecha:"), fecha_);
    campos->addRow(QStringLiteral("Carrera:"), carrera_);
    campos->addRow(QStringLiteral("Caballo ganador:"), caballo_);
    campos->addRow(QStringLiteral("Centro hípico:"), centro_);
    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(campos);
    raiz->addWidget(procesar, 0, Qt::AlignLeft);
    resultado_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    raiz->addWidget(resultado_, 1);
    resize(520, 280);

    enterVaA(carrera_, caballo_);
    enterVaA(caballo_, centro_);
    enterVaA(centro_, procesar);
    enterPulsa(procesar);
    primerFoco(carrera_);
    connect(procesar, &QPushButton::clicked, this, &Form_Admin_Remate::procesar);

    proteger([this] {
        fecha_->setText(fechaVista(logica_.fecha()));
        centro_->addItems(logica_.centros());
    });
}

void Form_Admin_Remate::procesar() {
    const auto hecho = intentar(
        [this] { return logica_.Procesar(carrera_->text(), caballo_->text(), centro_->currentText()); });
    if (!hecho || !*hecho) return;
    QStringList lineas;
    for (const GanadorSubasta& g : **hecho)
        lineas << QStringLiteral("%1: monto para la casa %2 (tabla grande), %3 (tabla pequeña)")
                      .arg(g.ch, formatoDolar(g.montoCasa), formatoDolar(g.montoCasa2));
    resultado_->setText(lineas.join(QLatin1Char('\n')));
}

}  // namespace hipico
