#include "races/Form_AbrirCerrar.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace hipico {

const QColor Form_AbrirCerrar::kVerde(0, 192, 0);
const QColor Form_AbrirCerrar::kRojo(192, 0, 0);

namespace {

constexpr int kRefrescoMs = 1000;

QFrame* marco(QWidget* padre) {
    auto* f = new QFrame(padre);
    f->setFrameShape(QFrame::Box);
    f->setFixedSize(34, 20);
    f->setAutoFillBackground(true);
    return f;
}

void colorear(QFrame* f, int bandera) {
    const QColor& c = bandera == 0 ? Form_AbrirCerrar::kRojo : Form_AbrirCerrar::kVerde;
    if (f->palette().color(QPalette::Window) == c) return;
    QPalette p = f->palette();
    p.setColor(QPalette::Window, c);
    f->setPalette(p);
    // Under the application's style sheet the palette alone does not paint it.
    f->setStyleSheet(QStringLiteral("QFrame { background: %1; border: 1px solid black; }").arg(c.name()));
}

}  // namespace

Form_AbrirCerrar::Form_AbrirCerrar(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_AbrirCerrar"), QStringLiteral("ABRIR Y CERRAR CARRERAS"),
              Centrado::SegunAjuste),
      logica_(ctx) {
    construir();
    proteger([this] { hipodromo_->addItems(logica_.hipodromos()); });
    connect(hipodromo_, &QComboBox::currentIndexChanged, this, &Form_AbrirCerrar::elegirHipodromo);
    elegirHipodromo();
    // The race list starts on the system's current race.
    const int actual = carrera_->findText(QString::number(logica_.carreraActualDelSistema()));
    if (actual >= 0) carrera_->setCurrentIndex(actual);
}

void Form_AbrirCerrar::construir() {
    hipodromo_ = new QComboBox(this);
    hipodromo_->setObjectName(QStringLiteral("hipodromo"));
    hipodromo_->setMinimumWidth(180);
    carrera_ = listaCarreras(QStringLiteral("carrera"), this);

    auto* pozos = new QGroupBox(QStringLiteral("Pozos"), this);
    ganadores_ = new QCheckBox(QStringLiteral("Ganadores"), pozos);
    remate_ = new QCheckBox(QStringLiteral("Remate"), pozos);
    macuare_ = new QCheckBox(QStringLiteral("Macuare"), pozos);
    tablaFija_ = new QCheckBox(QStringLiteral("Tabla Fija"), pozos);
    ganadores_->setObjectName(QStringLiteral("ganadores"));
    remate_->setObjectName(QStringLiteral("remate"));
    macuare_->setObjectName(QStringLiteral("macuare"));
    tablaFija_->setObjectName(QStringLiteral("tablaFija"));
    macuare_->setToolTip(QStringLiteral("Solo al abrir o cerrar la carrera actual"));
    auto* abrir = new QPushButton(QStringLiteral("Abrir"), pozos);
    auto* cerrar = new QPushButton(QStringLiteral("Cerrar"), pozos);
    auto* abrirActual = new QPushButton(QStringLiteral("Abrir carrera actual"), pozos);
    auto* cerrarActual = new QPushButton(QStringLiteral("Cerrar carrera actual"), pozos);
    abrir->setObjectName(QStringLiteral("abrir"));
    cerrar->setObjectName(QStringLiteral("cerrar"));
    abrirActual->setObjectName(QStringLiteral("abrirActual"));
    cerrarActual->setObjectName(QStringLiteral("cerrarActual"));
    abrirActual->setToolTip(QStringLiteral("La hace carrera actual y la abre en todos los hipódromos"));
    cerrarActual->setToolTip(QStringLiteral("La hace carrera actual y la cierra en todos los hipódromos"));

    auto* gPozos = new QGridLayout(pozos);
    gPozos->addWidget(ganadores_, 0, 0);
    gPozos->addWidget(remate_, 0, 1);
    gPozos->addWidget(macuare_, 1, 0);
    gPozos->addWidget(tablaFija_, 1, 1);
    gPozos->addWidget(abrirActual, 0, 2);
    gPozos->addWidget(cerrarActual, 1, 2);
    gPozos->addWidget(abrir, 2, 0);
    gPozos->addWidget(cerrar, 2, 1);

    estado_ = new QGroupBox(QStringLiteral("Estado de las carreras"), this);
    rejilla_ = new QGridLayout(estado_);
    rejilla_->setHorizontalSpacing(6);
    const QStringList filas = {QStringLiteral("Carrera"), QStringLiteral("Ganadores"), QStringLiteral("Remate"),
                               QStringLiteral("Tabla Fija")};
    for (int i = 0; i < filas.size(); ++i) rejilla_->addWidget(new QLabel(filas[i], estado_), i, 0);
    rejilla_->setColumnStretch(kCarrerasPorDia + 1, 1);

    auto* arriba = new QHBoxLayout;
    arriba->addWidget(new QLabel(QStringLiteral("Hipódromo:"), this));
    arriba->addWidget(hipodromo_);
    arriba->addSpacing(16);
    arriba->addWidget(new QLabel(QStringLiteral("Carrera:"), this));
    arriba->addWidget(carrera_);
    arriba->addStretch();
    // What the colours mean.
    auto* leyenda = new QHBoxLayout;
    leyenda->setObjectName(QStringLiteral("leyenda"));
    for (const auto& [color, texto] : {std::pair{1, QStringLiteral("Abierta a la venta")},
                                       std::pair{0, QStringLiteral("Cerrada")}}) {
        QFrame* muestra = marco(this);
        muestra->setFixedSize(20, 14);
        colorear(muestra, color);
        leyenda->addWidget(muestra);
        leyenda->addWidget(new QLabel(texto, this));
        leyenda->addSpacing(12);
    }
    leyenda->addStretch();

    auto* todo = new QVBoxLayout(this);
    todo->addLayout(arriba);
    todo->addWidget(pozos);
    todo->addWidget(estado_);
    todo->addLayout(leyenda);
    todo->addStretch();
    resize(720, 330);

    enterVaA(hipodromo_, carrera_);
    enterVaA(carrera_, ganadores_);
    enterVaA(ganadores_, remate_);
    enterVaA(remate_, macuare_);
    enterVaA(macuare_, tablaFija_);
    enterVaA(tablaFija_, abrir);
    for (QPushButton* b : {abrir, cerrar, abrirActual, cerrarActual}) enterPulsa(b);
    primerFoco(hipodromo_);
    ordenTabulacion({hipodromo_, carrera_, ganadores_, remate_, macuare_, tablaFija_, abrir, cerrar, abrirActual,
                 cerrarActual});

    connect(abrir, &QPushButton::clicked, this, [this] { accion(&AbrirCerrarLogica::abrir); });
    connect(cerrar, &QPushButton::clicked, this, [this] { accion(&AbrirCerrarLogica::cerrar); });
    connect(abrirActual, &QPushButton::clicked, this, [this] { accion(&AbrirCerrarLogica::abrirCarreraActual); });
    connect(cerrarActual, &QPushButton::clicked, this, [this] { accion(&AbrirCerrarLogica::cerrarCarreraActual); });

    reloj_ = new QTimer(this);
    reloj_->setInterval(kRefrescoMs);
    connect(reloj_, &QTimer::timeout, this, &Form_AbrirCerrar::refrescar);
}

void Form_AbrirCerrar::showEvent(QShowEvent* event) {
    Ventana::showEvent(event);
    reloj_->start();
}

void Form_AbrirCerrar::hideEvent(QHideEvent* event) {
    reloj_->stop();
    Ventana::hideEvent(event);
}

void Form_AbrirCerrar::closeEvent(QCloseEvent* event) {
    reloj_->stop();
    ctx_.ponerTituloMenu(logica_.tituloAlCerrar());
    Ventana::closeEvent(event);
}

void Form_AbrirCerrar::elegirHipodromo() {
    proteger([this] {
        logica_.elegirHipodromo(hipodromo_->currentText());
        pintar(logica_.indicadores());
    });
    titular();
}

void Form_AbrirCerrar::titular() {
    estado_->setTitle(QStringLiteral("Estado de las carreras del %1   (carrera actual: %2)")
                          .arg(fechaVista(logica_.fecha()))
                          .arg(logica_.carreraActualDelSistema()));
}

void Form_AbrirCerrar::refrescar() {
    enSegundoPlano([this] { pintar(logica_.indicadores()); });
}

void Form_AbrirCerrar::pintar(const QVector<Indicador>& filas) {
    while (columnas_.size() < filas.size()) {
        const int c = static_cast<int>(columnas_.size()) + 1;
        Columna col{new QLabel(estado_), marco(estado_), marco(estado_), marco(estado_)};
        col.carrera->setAlignment(Qt::AlignCenter);
        rejilla_->addWidget(col.carrera, 0, c);
        rejilla_->addWidget(col.ganadores, 1, c);
        rejilla_->addWidget(col.remate, 2, c);
        rejilla_->addWidget(col.tablaFija, 3, c);
        columnas_.push_back(col);
    }
    for (int i = 0; i < columnas_.size(); ++i) {
        const Columna& col = columnas_[i];
        const bool visible = i < filas.size();
        for (QWidget* w : {static_cast<QWidget*>(col.carrera), static_cast<QWidget*>(col.ganadores),
                           static_cast<QWidget*>(col.remate), static_cast<QWidget*>(col.tablaFija)})
            w->setVisible(visible);
        if (!visible) continue;
        const Indicador& f = filas[i];
        col.carrera->setText(QString::number(f.carrera));
        colorear(col.ganadores, f.venta);
        colorear(col.remate, f.ventaRm);
        colorear(col.tablaFija, f.ventaTf);
    }
}

QVector<Form_AbrirCerrar::Marca> Form_AbrirCerrar::marcas() const {
    QVector<Marca> out;
    for (const Columna& c : columnas_) {
        if (c.carrera->isHidden()) continue;
        out.push_back({c.carrera->text(), c.ganadores->palette().color(QPalette::Window),
                       c.remate->palette().color(QPalette::Window), c.tablaFija->palette().color(QPalette::Window)});
    }
    return out;
}

Pozos Form_AbrirCerrar::pozos() const {
    return {ganadores_->isChecked(), remate_->isChecked(), macuare_->isChecked(), tablaFija_->isChecked()};
}

int Form_AbrirCerrar::carrera() const { return static_cast<int>(leerEntero(carrera_->currentText()).value_or(0)); }

void Form_AbrirCerrar::accion(bool (AbrirCerrarLogica::*operacion)(int, const Pozos&)) {
    proteger([&] {
        if ((logica_.*operacion)(carrera(), pozos())) pintar(logica_.indicadores());
    });
    titular();
}

}  // namespace hipico
