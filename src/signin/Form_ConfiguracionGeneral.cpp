#include "signin/Form_ConfiguracionGeneral.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"
#include "signin/CierreDia.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace hipico {

Form_ConfiguracionGeneral::Form_ConfiguracionGeneral(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_ConfiguracionGeneral"), kTituloConfiguracion, Centrado::SegunAjuste),
      logica_(ctx) {
    auto* raiz = new QVBoxLayout(this);
    auto* pestanas = new QTabWidget;
    pestanas->setObjectName(QStringLiteral("pestanas"));
    raiz->addWidget(pestanas, 1);

    // System settings.
    auto* sistema = new QTabWidget;
    ajustes_ = new FormularioCampos(camposConfiguracion(), sistema);
    auto* hojaSistema = new QWidget;
    auto* ls = new QVBoxLayout(hojaSistema);
    ls->addWidget(sistema, 1);
    auto* guardar = boton(QStringLiteral("Guardar Configuración"), "Boton_Guardar");
    auto* filaS = new QHBoxLayout;
    filaS->addStretch(1);
    filaS->addWidget(guardar);
    ls->addLayout(filaS);
    pestanas->addTab(hojaSistema, QStringLiteral("CONFIGURACION DEL SISTEMA"));

    // Group parameters.
    auto* hojaGrupo = new QWidget;
    auto* lg = new QVBoxLayout(hojaGrupo);
    auto* elegir = new QHBoxLayout;
    grupos_ = new QComboBox;
    grupos_->setObjectName(QStringLiteral("Combo_Grupo"));
    grupos_->addItems(logica_.grupos());
    copiarCentro_ = new QCheckBox(QStringLiteral("Copiar a todos los grupos de su centro hípico"));
    copiarCentro_->setObjectName(QStringLiteral("Check_CopiarCentro"));
    elegir->addWidget(new QLabel(QStringLiteral("GRUPO")));
    elegir->addWidget(grupos_);
    elegir->addWidget(copiarCentro_);
    elegir->addStretch(1);
    lg->addLayout(elegir);
    auto* parametros = new QTabWidget;
    grupo_ = new FormularioCampos(camposGrupo(), parametros);
    lg->addWidget(parametros, 1);
    auto* guardarGrupo = boton(QStringLiteral("Guardar Parámetros"), "Boton_GuardarGrupo");
    auto* filaG = new QHBoxLayout;
    filaG->addStretch(1);
    filaG->addWidget(guardarGrupo);
    lg->addLayout(filaG);
    pestanas->addTab(hojaGrupo, QStringLiteral("PARAMETROS DE GRUPO"));

    // The day and its housekeeping.
    auto* hojaDia = new QWidget;
    auto* ld = new QVBoxLayout(hojaDia);
    auto* cierre = new QGroupBox(QStringLiteral("CIERRE DEL DIA"));
    auto* lc = new QVBoxLayout(cierre);
    lc->addWidget(new QLabel(QStringLiteral("Guarda los boletos del día de trabajo, escribe los totales de cada grupo y "
                                            "abre el día siguiente con todas las ventas cerradas.")));
    auto* cerrarDia = boton(QStringLiteral("Cerrar el Día"), "Boton_CierreDia");
    lc->addWidget(cerrarDia, 0, Qt::AlignLeft);
    ld->addWidget(cierre);
    auto* depurar = new QGroupBox(QStringLiteral("DEPURAR BOLETOS GUARDADOS Y BITACORA"));
    auto* lp = new QHBoxLayout(depurar);
    fechaDepurar_ = new QLineEdit;
    fechaDepurar_->setObjectName(QStringLiteral("Text_FechaDepurar"));
    fechaDepurar_->setPlaceholderText(QStringLiteral("DD-MM-AAAA"));
    fechaDepurar_->setMaxLength(10);
    auto* botonDepurar = boton(QStringLiteral("Depurar"), "Boton_Depurar");
    lp->addWidget(new QLabel(QStringLiteral("Anteriores al")));
    lp->addWidget(fechaDepurar_);
    lp->addWidget(botonDepurar);
    lp->addStretch(1);
    ld->addWidget(depurar);
    ld->addStretch(1);
    pestanas->addTab(hojaDia, QStringLiteral("DIA Y MANTENIMIENTO"));

    auto* salir = boton(QStringLiteral("Salir"), "Boton_Salir");
    auto* abajo = new QHBoxLayout;
    abajo->addStretch(1);
    abajo->addWidget(salir);
    raiz->addLayout(abajo);

    enterVaA(fechaDepurar_, botonDepurar);
    enterPulsa(guardar);
    enterPulsa(guardarGrupo);
    enterPulsa(botonDepurar);
    enterPulsa(cerrarDia);
    connect(guardar, &QPushButton::clicked, this, &Form_ConfiguracionGeneral::Guardar_Click);
    connect(guardarGrupo, &QPushButton::clicked, this, &Form_ConfiguracionGeneral::GuardarGrupo_Click);
    connect(botonDepurar, &QPushButton::clicked, this, &Form_ConfiguracionGeneral::Depurar_Click);
    connect(cerrarDia, &QPushButton::clicked, this, &Form_ConfiguracionGeneral::CierreDia_Click);
    connect(salir, &QPushButton::clicked, this, &QWidget::close);
    connect(grupos_, &QComboBox::currentTextChanged, this, &Form_ConfiguracionGeneral::CargarGrupo);

    if (const auto v = logica_.cargar()) ajustes_->poner(*v);
    const int propio = grupos_->findText(ctx.session.grupo);
    if (propio >= 0) grupos_->setCurrentIndex(propio);
    CargarGrupo();
    primerFoco(ajustes_->primero());
    resize(900, 640);
}

void Form_ConfiguracionGeneral::Guardar_Click() { logica_.guardar(ajustes_->valores()); }

void Form_ConfiguracionGeneral::CargarGrupo() {
    if (grupos_->currentText().isEmpty()) return;
    if (const auto v = logica_.cargarGrupo(grupos_->currentText())) grupo_->poner(*v);
}

void Form_ConfiguracionGeneral::GuardarGrupo_Click() {
    logica_.guardarGrupo(grupos_->currentText(), grupo_->valores(), copiarCentro_->isChecked());
}

void Form_ConfiguracionGeneral::Depurar_Click() {
    if (logica_.depurar(fechaDepurar_->text())) fechaDepurar_->clear();
}

void Form_ConfiguracionGeneral::CierreDia_Click() {
    if (CierreDia(ctx_).Cerrar())
        if (const auto v = logica_.cargar()) ajustes_->poner(*v);
}

}  // namespace hipico
