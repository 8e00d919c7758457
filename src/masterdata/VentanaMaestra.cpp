#include "masterdata/VentanaMaestra.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Formulario.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace hipico {

VentanaMaestra::VentanaMaestra(Context& ctx, QWidget* parent, std::unique_ptr<Maestro> logica)
    : Ventana(ctx, parent, logica->descripcion().ventana, logica->descripcion().titulo, Centrado::SegunAjuste),
      logica_(std::move(logica)) {
    const DescripcionMaestro& d = logica_->descripcion();

    nuevo_ = boton(QStringLiteral("&Nuevo"), "Boton_Nuevo");
    guardar_ = boton(QStringLiteral("&Guardar"), "Boton_Guardar");
    buscar_ = boton(QStringLiteral("&Buscar"), "Boton_Buscar");
    modificar_ = boton(QStringLiteral("&Modificar"), "Boton_Modificar");
    eliminar_ = boton(QStringLiteral("&Eliminar"), "Boton_Eliminar");
    cancelar_ = boton(QStringLiteral("&Cancelar"), "Boton_Cancelar");
    auto* salir = boton(QStringLiteral("&Salir"), "Boton_Salir");
    auto* barra = new QHBoxLayout;
    for (QPushButton* b : {nuevo_, guardar_, buscar_, modificar_, eliminar_, cancelar_}) barra->addWidget(b);
    barra->addStretch(1);
    barra->addWidget(salir);
    acciones_ = new QHBoxLayout;

    auto* pestanas = new QTabWidget;
    pestanas->setObjectName(QStringLiteral("Pestanas"));
    formulario_ = new FormularioCampos(d.campos, pestanas, 2);

    filtro_ = new QComboBox;
    filtro_->setObjectName(QStringLiteral("Combo_Filtro"));
    estado_ = new QLabel;
    estado_->setObjectName(QStringLiteral("estado"));
    auto* arriba = new QHBoxLayout;
    if (!d.etiquetaFiltro.isEmpty()) {
        arriba->addWidget(new QLabel(d.etiquetaFiltro));
        arriba->addWidget(filtro_);
        filtro_->addItems(logica_->filtros());
    } else {
        filtro_->hide();
    }
    arriba->addStretch(1);
    arriba->addWidget(estado_);

    modelo_ = new RecordsetModel(this);
    grilla_ = grillaDe(modelo_, QStringLiteral("Grilla"));
    auto* pie = new QHBoxLayout;
    const char* nombres[] = {"Boton_Primero", "Boton_Anterior", "Boton_Siguiente", "Boton_Ultimo"};
    const char* textos[] = {"|<", "<", ">", ">|"};
    for (int i = 0; i < 4; ++i) {
        auto* b = boton(QString::fromLatin1(textos[i]), nombres[i]);
        b->setMaximumWidth(48);
        pie->addWidget(b);
        navegacion_ << b;
    }
    pie->addStretch(1);

    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(barra);
    raiz->addLayout(acciones_);
    raiz->addWidget(pestanas);
    raiz->addLayout(arriba);
    raiz->addWidget(grilla_, 1);
    raiz->addLayout(pie);

    connect(nuevo_, &QPushButton::clicked, this, &VentanaMaestra::Nuevo_Click);
    connect(guardar_, &QPushButton::clicked, this, &VentanaMaestra::Guardar_Click);
    connect(buscar_, &QPushButton::clicked, this, &VentanaMaestra::Buscar_Click);
    connect(modificar_, &QPushButton::clicked, this, &VentanaMaestra::Modificar_Click);
    connect(eliminar_, &QPushButton::clicked, this, &VentanaMaestra::Eliminar_Click);
    connect(cancelar_, &QPushButton::clicked, this, &VentanaMaestra::Cancelar_Click);
    connect(salir, &QPushButton::clicked, this, &QWidget::close);
    connect(navegacion_[0], &QPushButton::clicked, this, &VentanaMaestra::Primero_Click);
    connect(navegacion_[1], &QPushButton::clicked, this, &VentanaMaestra::Anterior_Click);
    connect(navegacion_[2], &QPushButton::clicked, this, &VentanaMaestra::Siguiente_Click);
    connect(navegacion_[3], &QPushButton::clicked, this, &VentanaMaestra::Ultimo_Click);
    connect(grilla_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& actual) {
                if (modo_ == Modo::Consulta && actual.isValid()) cargarFila(actual.row());
            });
    connect(filtro_, &QComboBox::currentTextChanged, this, [this] { refrescar(); });

    ponerOpciones();
    aplicarModo(Modo::Consulta);
    refrescar();
    primerFoco(grilla_);
    resize(960, 620);
}

VentanaMaestra::~VentanaMaestra() = default;

QString VentanaMaestra::filtroActual() const { return filtro_->currentText(); }

QPushButton* VentanaMaestra::agregarComando(const QString& texto, const QString& nombre, std::function<bool()> accion) {
    auto* b = boton(texto, nombre);
    if (comandos_.isEmpty()) acciones_->addStretch(1);
    acciones_->insertWidget(acciones_->count() - 1, b);
    comandos_ << b;
    connect(b, &QPushButton::clicked, this, [this, accion = std::move(accion)] {
        if (accion()) refrescar(logica_->claveActual());
    });
    aplicarModo(modo_);
    return b;
}

void VentanaMaestra::ponerOpciones() {
    for (const Campo& c : logica_->descripcion().campos)
        if (c.tipo == Campo::Tipo::Lista)
            if (const auto lista = intentar([&] { return logica_->opciones(c.columna); }))
                formulario_->ponerOpciones(c.columna, *lista);
}

void VentanaMaestra::aplicarModo(Modo modo) {
    modo_ = modo;
    const bool consulta = modo == Modo::Consulta;
    const QString& clave = logica_->descripcion().clave;
    formulario_->bloquear(consulta);
    // modificar never changes the key.
    if (modo == Modo::Modificando) formulario_->bloquearCampo(clave, true);
    nuevo_->setEnabled(consulta);
    buscar_->setEnabled(consulta);
    modificar_->setEnabled(consulta && logica_->hayRegistro());
    eliminar_->setEnabled(consulta && logica_->hayRegistro());
    guardar_->setEnabled(!consulta);
    cancelar_->setEnabled(!consulta);
    grilla_->setEnabled(consulta);
    filtro_->setEnabled(consulta);
    for (QPushButton* b : navegacion_) b->setEnabled(consulta);
    for (QPushButton* b : comandos_) b->setEnabled(consulta);
    if (modo == Modo::Nuevo) estado_->setText(QStringLiteral("NUEVO REGISTRO"));
    else if (modo == Modo::Modificando) estado_->setText(QStringLiteral("MODIFICANDO ") + logica_->claveActual());
    else {
        const int n = modelo_->rowCount();
        const int i = grilla_->currentIndex().row();
        estado_->setText(n == 0 ? QStringLiteral("SIN REGISTROS")
                                : QStringLiteral("REGISTRO %1 DE %2").arg(i >= 0 ? i + 1 : 0).arg(n));
    }
}

void VentanaMaestra::refrescar(const QString& clave) {
    if (const auto filas = logica_->listar(filtroActual())) mostrar(*filas, clave);
}

void VentanaMaestra::mostrar(const Recordset& filas, const QString& clave) {
    QVector<RecordsetModel::Column> columnas;
    for (const ColumnaMaestro& c : logica_->descripcion().columnas) {
        RecordsetModel::Column col{c.titulo, c.campo, {}, Qt::AlignLeft | Qt::AlignVCenter};
        if (c.fecha) {
            const QString campo = c.campo;
            col.format = [campo](const Row& r) { return r.has(campo) ? fechaVista(r.text(campo)) : QString(); };
        }
        columnas << col;
    }
    modelo_->setRecordset(filas, columnas);
    grilla_->resizeColumnsToContents();
    const int elegida = clave.isEmpty() ? 0 : std::max(0, filas.find(logica_->descripcion().clave, clave));
    if (filas.empty()) {
        logica_->nuevo();
        formulario_->limpiar();
        aplicarModo(Modo::Consulta);
        return;
    }
    irA(elegida);
}

void VentanaMaestra::irA(int fila) {
    const int n = modelo_->rowCount();
    if (n == 0) return;
    fila = std::clamp(fila, 0, n - 1);
    const QModelIndex indice = modelo_->index(fila, 0);
    if (grilla_->currentIndex().row() == fila) cargarFila(fila);
    grilla_->setCurrentIndex(indice);
    grilla_->scrollTo(indice);
}

void VentanaMaestra::cargarFila(int fila) {
    const Recordset& rs = modelo_->recordset();
    if (fila < 0 || fila >= rs.size()) return;
    if (const auto valores = logica_->leer(rs[fila].text(logica_->descripcion().clave))) formulario_->poner(*valores);
    aplicarModo(Modo::Consulta);
}

void VentanaMaestra::Nuevo_Click() {
    const ValoresCampos valores = logica_->nuevo();
    formulario_->limpiar();
    ponerOpciones();
    formulario_->poner(valores);
    aplicarModo(Modo::Nuevo);
    if (QWidget* primero = formulario_->primero()) primero->setFocus(Qt::OtherFocusReason);
}

void VentanaMaestra::Modificar_Click() {
    if (!logica_->hayRegistro()) return;
    ponerOpciones();
    aplicarModo(Modo::Modificando);
    for (const Campo& c : logica_->descripcion().campos) {
        QWidget* w = formulario_->campo(c.columna);
        if (w && w->isEnabled()) {
            w->setFocus(Qt::OtherFocusReason);
            break;
        }
    }
}

void VentanaMaestra::Guardar_Click() {
    if (modo_ == Modo::Consulta) return;
    const ValoresCampos valores = formulario_->valores();
    const bool hecho = modo_ == Modo::Nuevo ? logica_->guardar(valores) : logica_->modificar(valores);
    if (!hecho) return;
    aplicarModo(Modo::Consulta);
    refrescar(logica_->claveActual());
}

void VentanaMaestra::Cancelar_Click() {
    const QString clave = logica_->claveActual();
    aplicarModo(Modo::Consulta);
    refrescar(clave);
}

void VentanaMaestra::Buscar_Click() {
    if (const auto filas = logica_->buscar()) mostrar(*filas, {});
}

void VentanaMaestra::Eliminar_Click() {
    if (logica_->eliminar()) refrescar();
}

void VentanaMaestra::Primero_Click() { irA(0); }
void VentanaMaestra::Anterior_Click() { irA(grilla_->currentIndex().row() - 1); }
void VentanaMaestra::Siguiente_Click() { irA(grilla_->currentIndex().row() + 1); }
void VentanaMaestra::Ultimo_Click() { irA(modelo_->rowCount() - 1); }

void VentanaMaestra::teclaEscape() {
    if (modo_ != Modo::Consulta)
        Cancelar_Click();
    else
        close();
}

}  // namespace hipico
