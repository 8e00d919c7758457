#include "sales/Form_ConfImpresion.h"

#include "core/Context.h"
#include "gui/Teclado.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace hipico {

namespace {

QComboBox* siNo(const char* nombre, bool si) {
    auto* c = new QComboBox;
    c->setObjectName(nombre);
    c->addItems({QStringLiteral("SI"), QStringLiteral("NO")});
    c->setCurrentIndex(si ? 0 : 1);
    return c;
}

}  // namespace

Form_ConfImpresion::Form_ConfImpresion(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_ConfImpresion"), kTituloConfImpresion), logica_(ctx) {
    const ConfLocal conf = intentar([this] { return logica_.cargar(); }).value_or(ctx.session.confLocal);

    puerto_ = new QComboBox;
    puerto_->setObjectName(QStringLiteral("Combo_Puerto"));
    puerto_->setEditable(true);
    puerto_->addItems(ConfImpresion::modos());
    puerto_->setCurrentText(conf.puerto);
    avisoPuerto_ = new QLabel;
    avisoPuerto_->setObjectName(QStringLiteral("avisoPuerto"));
    imprimir_ = siNo("Combo_Imprimir", conf.impresion == 1);
    tamLetra_ = new QSpinBox;
    tamLetra_->setObjectName(QStringLiteral("Text_TamLetra"));
    tamLetra_->setRange(6, 24);
    tamLetra_->setValue(conf.tamletra > 0 ? conf.tamletra : 8);
    barras_ = siNo("Combo_CodBarras", conf.codbarras == 1);

    auto* forma = new QFormLayout;
    forma->addRow(QStringLiteral("Impresora / puerto"), puerto_);
    forma->addRow(QString(), avisoPuerto_);
    forma->addRow(QStringLiteral("Imprimir boletos"), imprimir_);
    forma->addRow(QStringLiteral("Tamaño de letra"), tamLetra_);
    forma->addRow(QStringLiteral("Código de barras"), barras_);
    auto* ayuda = new QLabel(QStringLiteral("WINDOWS2: impresora predeterminada (gráfica, con código de barras)\n"
                                            "WINDOWS: cola compartida X de este equipo (texto)\n"
                                            "Otro valor: puerto o archivo (texto)"));
    ayuda->setObjectName(QStringLiteral("ayuda"));

    auto* guardar = new QPushButton(QStringLiteral("Guardar"));
    guardar->setObjectName(QStringLiteral("Boton_Guardar"));
    auto* prueba = new QPushButton(QStringLiteral("Imprimir Prueba"));
    prueba->setObjectName(QStringLiteral("Boton_Prueba"));
    auto* cerrar = new QPushButton(QStringLiteral("Salir"));
    auto* botones = new QHBoxLayout;
    botones->addWidget(guardar);
    botones->addWidget(prueba);
    botones->addStretch(1);
    botones->addWidget(cerrar);

    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(forma);
    raiz->addWidget(ayuda);
    raiz->addLayout(botones);

    for (QWidget* w : {static_cast<QWidget*>(puerto_), static_cast<QWidget*>(imprimir_),
                       static_cast<QWidget*>(tamLetra_), static_cast<QWidget*>(barras_)})
        EnterMovesOn::install(w);
    EnterMovesOn::install(puerto_->lineEdit());
    connect(guardar, &QPushButton::clicked, this, &Form_ConfImpresion::Guardar_Click);
    connect(prueba, &QPushButton::clicked, this, &Form_ConfImpresion::Prueba_Click);
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    guardar->setAutoDefault(true);
    prueba->setAutoDefault(true);
    connect(puerto_, &QComboBox::currentTextChanged, this,
            [this](const QString& p) { avisoPuerto_->setText(ConfImpresion::avisoPuerto(p)); });
    guardados_ = valores();
    primerFoco(puerto_);
}

void Form_ConfImpresion::closeEvent(QCloseEvent* event) {
    if (valores() != guardados_ && !ctx_.dialogs.confirm(kTituloConfImpresion, kSalirSinGuardar, true)) {
        event->ignore();
        return;
    }
    Ventana::closeEvent(event);
}

ConfImpresion::Valores Form_ConfImpresion::valores() const {
    return {puerto_->currentText(), imprimir_->currentIndex() == 0, tamLetra_->value(), barras_->currentIndex() == 0};
}

void Form_ConfImpresion::Guardar_Click() {
    const ConfImpresion::Valores v = valores();
    if (proteger([&] { return logica_.guardar(v); })) guardados_ = v;
}

void Form_ConfImpresion::Prueba_Click() {
    proteger([this] { return logica_.imprimirPrueba(valores()); });
}

}  // namespace hipico
