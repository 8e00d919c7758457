#include "races/Form_Carreras.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"
#include "gui/Teclado.h"
#include "races/Hipodromos.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace hipico {

Form_Carreras::Form_Carreras(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Carreras"), QStringLiteral("CARRERAS Y CABALLOS"),
              Centrado::SegunAjuste),
      logica_(ctx) {
    construir();
    cargar();
}

void Form_Carreras::construir() {
    // The card: date, track and race.
    auto* datos = new QGroupBox(QStringLiteral("Carrera"), this);
    fecha_ = selectorFecha(QStringLiteral("fecha"), datos);
    fecha2_ = selectorFecha(QStringLiteral("fecha2"), datos);
    fecha2_->setToolTip(QStringLiteral("Última fecha de las carreras a transferir"));
    hipodromo_ = new QComboBox(datos);
    hipodromo_->setObjectName(QStringLiteral("hipodromo"));
    hipodromo_->setMinimumWidth(180);
    carrera_ = listaCarreras(QStringLiteral("carrera"), datos);
    auto* gDatos = new QGridLayout(datos);
    gDatos->addWidget(new QLabel(QStringLiteral("Fecha:"), datos), 0, 0);
    gDatos->addWidget(fecha_, 0, 1);
    gDatos->addWidget(new QLabel(QStringLiteral("Hasta:"), datos), 0, 2);
    gDatos->addWidget(fecha2_, 0, 3);
    gDatos->addWidget(new QLabel(QStringLiteral("Hipódromo:"), datos), 1, 0);
    gDatos->addWidget(hipodromo_, 1, 1);
    gDatos->addWidget(new QLabel(QStringLiteral("Carrera:"), datos), 1, 2);
    gDatos->addWidget(carrera_, 1, 3);

    // The horse: name search, chosen name and number.
    auto* cab = new QGroupBox(QStringLiteral("Caballo"), this);
    busqueda_ = new QLineEdit(cab);
    busqueda_->setObjectName(QStringLiteral("busqueda"));
    busqueda_->setPlaceholderText(QStringLiteral("Escriba parte del nombre"));
    busqueda_->setMaxLength(100);
    modeloLista_ = new RecordsetModel(this);
    lista_ = grillaDe(modeloLista_, QStringLiteral("lista"), cab);
    caballo_ = new QLineEdit(cab);
    caballo_->setObjectName(QStringLiteral("caballo"));
    caballo_->setMaxLength(100);
    numero_ = new QLineEdit(cab);
    numero_->setObjectName(QStringLiteral("numero"));
    numero_->setMaxLength(3);
    numero_->setFixedWidth(60);
    numero_->setAlignment(Qt::AlignRight);
    aceptar_ = new QPushButton(QStringLiteral("&Aceptar"), cab);
    aceptar_->setObjectName(QStringLiteral("aceptar"));
    eliminarCaballo_ = new QPushButton(QStringLiteral("Eliminar nombre"), cab);
    eliminarCaballo_->setObjectName(QStringLiteral("eliminarCaballo"));
    auto* gCab = new QGridLayout(cab);
    gCab->addWidget(new QLabel(QStringLiteral("Buscar:"), cab), 0, 0);
    gCab->addWidget(busqueda_, 0, 1, 1, 3);
    gCab->addWidget(lista_, 1, 1, 1, 3);
    gCab->addWidget(new QLabel(QStringLiteral("Caballo:"), cab), 2, 0);
    gCab->addWidget(caballo_, 2, 1);
    gCab->addWidget(new QLabel(QStringLiteral("Número:"), cab), 2, 2);
    gCab->addWidget(numero_, 2, 3);
    auto* botonesCab = new QHBoxLayout;
    botonesCab->addStretch();
    botonesCab->addWidget(eliminarCaballo_);
    botonesCab->addWidget(aceptar_);
    gCab->addLayout(botonesCab, 3, 0, 1, 4);

    // The race as entered.
    auto* ver = new QGroupBox(QStringLiteral("Caballos de la carrera"), this);
    verCarrera_ = listaCarreras(QStringLiteral("verCarrera"), ver);
    verCarrera_->setEditable(true);
    verCarrera_->setInsertPolicy(QComboBox::NoInsert);
    verCarrera_->setFixedWidth(70);
    modeloGrilla_ = new RecordsetModel(this);
    grilla_ = grillaDe(modeloGrilla_, QStringLiteral("grilla"), ver);
    auto* vVer = new QVBoxLayout(ver);
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Carrera:"), ver));
    fila->addWidget(verCarrera_);
    fila->addStretch();
    vVer->addLayout(fila);
    vVer->addWidget(grilla_);

    // Copy and housekeeping.
    auto* mant = new QGroupBox(QStringLiteral("Transferencia y mantenimiento"), this);
    auto* transferir = new QPushButton(QStringLiteral("Transferir carreras"), mant);
    transferir->setObjectName(QStringLiteral("transferir"));
    auto* borrarCarrera = new QPushButton(QStringLiteral("Eliminar carrera"), mant);
    borrarCarrera->setObjectName(QStringLiteral("eliminarCarrera"));
    auto* viejas = new QPushButton(QStringLiteral("Eliminar carreras viejas"), mant);
    viejas->setObjectName(QStringLiteral("eliminarCarrerasViejas"));
    auto* remates = new QPushButton(QStringLiteral("Eliminar remates y bitácora viejos"), mant);
    remates->setObjectName(QStringLiteral("eliminarRematesViejos"));
    auto* boletos = new QPushButton(QStringLiteral("Eliminar boletos viejos"), mant);
    boletos->setObjectName(QStringLiteral("eliminarBoletosViejos"));
    auto* hMant = new QHBoxLayout(mant);
    for (QPushButton* b : {transferir, borrarCarrera, viejas, remates, boletos}) {
        hMant->addWidget(b);
        enterPulsa(b);
    }

    auto* arriba = new QHBoxLayout;
    auto* izquierda = new QVBoxLayout;
    izquierda->addWidget(datos);
    izquierda->addWidget(cab, 1);
    arriba->addLayout(izquierda, 3);
    arriba->addWidget(ver, 2);
    auto* todo = new QVBoxLayout(this);
    todo->addLayout(arriba, 1);
    todo->addWidget(mant);
    resize(900, 560);

    // Keyboard: the boxes take only what they hold, Enter moves on.
    KeyFilter::install(busqueda_, Mayusculas);
    KeyFilter::install(caballo_, Mayusculas);
    KeyFilter::install(numero_, SoloNumeros);
    KeyFilter::install(verCarrera_, SoloNumeros);
    enterVaA(fecha_, fecha2_);
    enterVaA(fecha2_, hipodromo_);
    enterVaA(hipodromo_, carrera_);
    enterVaA(carrera_, busqueda_);
    enterEjecuta(busqueda_, [this] { tomarBusqueda(); });
    enterEjecuta(lista_, [this] {
        elegirCaballo(lista_->currentIndex().isValid() ? lista_->currentIndex().row() : 0);
    });
    enterVaA(caballo_, numero_);
    enterEjecuta(numero_, [this] { aceptar(); });
    enterPulsa(aceptar_);
    enterPulsa(eliminarCaballo_);
    busqueda_->installEventFilter(this);
    primerFoco(busqueda_);
    ordenTabulacion({fecha_, fecha2_, hipodromo_, carrera_, busqueda_, lista_, caballo_, numero_, aceptar_,
                 eliminarCaballo_, verCarrera_, grilla_, transferir, borrarCarrera, viejas, remates, boletos});

    connect(busqueda_, &QLineEdit::textChanged, this, &Form_Carreras::buscar);
    connect(lista_, &QTableView::clicked, this, [this](const QModelIndex& i) { elegirCaballo(i.row()); });
    connect(aceptar_, &QPushButton::clicked, this, &Form_Carreras::aceptar);
    connect(eliminarCaballo_, &QPushButton::clicked, this, &Form_Carreras::eliminarCaballo);
    // Picking a race from the viewing list shows it on every track; typing a
    // race number into it shows it on the chosen track only.
    connect(verCarrera_, &QComboBox::activated, this, [this] { verCarrera(false); });
    connect(verCarrera_->lineEdit(), &QLineEdit::textEdited, this, [this] { verCarrera(true); });
    connect(transferir, &QPushButton::clicked, this, &Form_Carreras::transferir);
    connect(borrarCarrera, &QPushButton::clicked, this, &Form_Carreras::eliminarCarrera);
    connect(viejas, &QPushButton::clicked, this,
            [this] { proteger([this] { logica_.eliminarCarrerasViejas(fecha_->date()); }); });
    connect(remates, &QPushButton::clicked, this,
            [this] { proteger([this] { logica_.eliminarRematesViejos(fecha_->date()); }); });
    connect(boletos, &QPushButton::clicked, this,
            [this] { proteger([this] { logica_.eliminarBoletosViejos(fecha_->date()); }); });
}

void Form_Carreras::cargar() {
    QDate dia = desdeFechaSql(ctx_.session.fecha);
    if (!dia.isValid()) dia = ctx_.clock.today();
    fecha_->setDate(dia);
    fecha2_->setDate(dia);
    proteger([this] {
        hipodromo_->addItems(logica_.hipodromos());
        // The card is entered on the system's current track unless another one is chosen.
        hipodromo_->setCurrentIndex(hipodromo_->findText(logica_.hipodromoActual()));
        mostrarCaballos(QString());
        mostrarGrilla(logica_.llenarGrilla(fecha_->date(), verCarrera_->currentText()));
    });
}

bool Form_Carreras::eventFilter(QObject* watched, QEvent* event) {
    // Down in the search box goes into the list of names.
    if (watched == busqueda_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && modeloLista_->rowCount() > 0) {
        lista_->setFocus();
        lista_->selectRow(0);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

EntradaCaballo Form_Carreras::entrada() const {
    return {fecha_->date(), hipodromo_->currentText(), carrera_->currentText(), caballo_->text(), numero_->text()};
}

void Form_Carreras::aceptar() {
    const EntradaCaballo e = entrada();
    const bool hecho = proteger([&] {
        if (!logica_.aceptar(e)) return false;
        verCarrera_->setCurrentText(e.carrera);
        mostrarGrilla(logica_.llenarGrilla(e.fecha, e.carrera));
        return true;
    });
    if (!hecho) return;
    fecha2_->setDate(fecha_->date());
    // Ready for the next horse of the race.
    if (const auto n = numeroCaja(e.numero); n && !e.numero.isEmpty()) numero_->setText(QString::number(*n + 1));
    caballo_->clear();
    busqueda_->clear();
    busqueda_->setFocus();
}

// The names follow what is typed: a failure is told once, not per key.
void Form_Carreras::buscar(const QString& texto) {
    enSegundoPlano([&] { mostrarCaballos(texto); });
}

void Form_Carreras::mostrarCaballos(const QString& texto) {
    modeloLista_->setRecordset(logica_.buscarCaballos(texto), {{QStringLiteral(" CABALLO "), "nombre", {}}});
}

void Form_Carreras::elegirCaballo(int fila) {
    if (fila < 0 || fila >= modeloLista_->rowCount()) return;
    caballo_->setText(modeloLista_->recordset()[fila].text(QStringLiteral("nombre")));
    numero_->setFocus(Qt::TabFocusReason);
}

void Form_Carreras::tomarBusqueda() {
    // Enter in the search box: the name typed when it is known exactly, else
    // the first name of the list, else (a new horse) the text itself.
    const QString texto = busqueda_->text().trimmed();
    if (texto.isEmpty()) {
        caballo_->setFocus(Qt::TabFocusReason);
        return;
    }
    const int exacto = modeloLista_->recordset().find(QStringLiteral("nombre"), texto);
    if (exacto >= 0 || modeloLista_->rowCount() > 0) {
        elegirCaballo(exacto >= 0 ? exacto : 0);
        return;
    }
    caballo_->setText(texto);
    numero_->setFocus(Qt::TabFocusReason);
}

void Form_Carreras::eliminarCaballo() {
    proteger([this] {
        if (!logica_.eliminarCaballo(caballo_->text())) return;
        caballo_->clear();
        mostrarCaballos(busqueda_->text());
    });
}

void Form_Carreras::verCarrera(bool conHipodromo) {
    proteger([&] {
        const QString carrera = verCarrera_->currentText();
        mostrarGrilla(conHipodromo ? logica_.llenarGrillaHipodromo(fecha_->date(), carrera, hipodromo_->currentText())
                                   : logica_.llenarGrilla(fecha_->date(), carrera));
    });
}

void Form_Carreras::mostrarGrilla(Recordset rs) {
    const auto derecha = Qt::AlignRight | Qt::AlignVCenter;
    modeloGrilla_->setRecordset(std::move(rs), {{QStringLiteral(" ID "), "id_carrera", {}, derecha},
                                                {QStringLiteral(" Nº "), "nu_caballo", {}, derecha},
                                                {QStringLiteral(" CABALLO "), "caballo", {}}});
    grilla_->resizeColumnToContents(0);
    grilla_->resizeColumnToContents(1);
}

void Form_Carreras::transferir() {
    proteger([this] {
        if (logica_.transferirCarreras(fecha_->date(), fecha2_->date()))
            mostrarGrilla(logica_.llenarGrilla(fecha_->date(), verCarrera_->currentText()));
    });
}

void Form_Carreras::eliminarCarrera() {
    proteger([this] {
        logica_.eliminarCarrera(fecha_->date(), carrera_->currentText(), hipodromo_->currentText());
        mostrarGrilla(logica_.llenarGrilla(fecha_->date(), verCarrera_->currentText()));
    });
}

}  // namespace hipico
