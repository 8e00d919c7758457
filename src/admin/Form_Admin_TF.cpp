#include "admin/Form_Admin_TF.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "sales/JuegoTablaFija.h"
#include "sales/TicketKeys.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

enum Columna { kCab, kNombre, kValor, kMaximo, kRetirado, kTablas, kVenta, kColumnas };

}  // namespace

Form_Admin_TF::Form_Admin_TF(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Admin_TF"), QStringLiteral("ADMINISTRACIÓN DE TABLA FIJA"),
              Centrado::SegunAjuste),
      escritorio_(ctx), boletos_(ctx, juegoTablaFija()), opciones_(ctx) {
    construir();
    actualizar();
    resize(1120, 680);
    primerFoco(carrera_);
}

Seleccion Form_Admin_TF::seleccion() const {
    Seleccion s = seleccionInicial(ctx_);
    s.fecha = fechaSql(fecha_->date());
    s.hipodromo = hipodromo_->currentText();
    s.carrera = carrera_->currentText().toLongLong();
    return s;
}

void Form_Admin_TF::construir() {
    auto* raiz = new QVBoxLayout(this);
    auto* arriba = new QHBoxLayout;
    fecha_ = selectorFecha(QStringLiteral("fecha"));
    fecha_->setDate(desdeFechaSql(seleccionInicial(ctx_).fecha));
    hipodromo_ = new QComboBox;
    hipodromo_->setObjectName(QStringLiteral("hipodromo"));
    hipodromo_->addItems(opciones_.hipodromos());
    hipodromo_->setCurrentText(opciones_.hipodromoPorDefecto());
    carrera_ = listaCarreras(QStringLiteral("carrera"));
    const long long actual = leerEntero(ctx_.session.ajusteTexto(QStringLiteral("carrera"))).value_or(1);
    carrera_->setCurrentText(QString::number(actual));
    arriba->addWidget(new QLabel(QStringLiteral("FECHA")));
    arriba->addWidget(fecha_);
    arriba->addWidget(new QLabel(QStringLiteral("HIPODROMO")));
    arriba->addWidget(hipodromo_);
    arriba->addWidget(new QLabel(QStringLiteral("CARRERA")));
    arriba->addWidget(carrera_);
    QPushButton* refrescar = boton(QStringLiteral("Actualizar"), QStringLiteral("actualizar"));
    arriba->addWidget(refrescar);
    arriba->addStretch(1);
    raiz->addLayout(arriba);

    auto* columnas = new QHBoxLayout;
    raiz->addLayout(columnas, 1);
    auto* izquierda = new QVBoxLayout;
    caballos_ = new QTableWidget(0, kColumnas);
    caballos_->setObjectName(QStringLiteral("caballos"));
    caballos_->setHorizontalHeaderLabels({QStringLiteral("CAB"), QStringLiteral("CABALLO"), QStringLiteral("VALOR"),
                                          QStringLiteral("MÁX. BOLETO"), QStringLiteral("RETIRADO"),
                                          QStringLiteral("TABLAS"), QStringLiteral("VENTA")});
    caballos_->verticalHeader()->hide();
    caballos_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    caballos_->horizontalHeader()->setSectionResizeMode(kNombre, QHeaderView::Stretch);
    izquierda->addWidget(caballos_, 1);
    estado_ = new QLabel;
    estado_->setObjectName(QStringLiteral("estado"));
    izquierda->addWidget(estado_);
    totales_ = new QLabel;
    totales_->setObjectName(QStringLiteral("totales"));
    izquierda->addWidget(totales_);
    columnas->addLayout(izquierda, 3);

    auto* derecha = new QVBoxLayout;
    auto* pool = new QGroupBox(QStringLiteral("CARRERA"));
    auto* gp = new QGridLayout(pool);
    QPushButton* abrir = boton(QStringLiteral("Abrir Tabla Fija"), QStringLiteral("abrir"));
    QPushButton* cerrar = boton(QStringLiteral("Cerrar Tabla Fija"), QStringLiteral("cerrar"));
    QPushButton* retirar = boton(QStringLiteral("Retirar / Reincorporar"), QStringLiteral("retirar"));
    ganador_ = caja(QStringLiteral("ganador"), nullptr, 2, SoloNumeros, 60);
    QPushButton* procesar = boton(QStringLiteral("Procesar"), QStringLiteral("procesar"));
    QPushButton* limpiar = boton(QStringLiteral("Limpiar Carrera"), QStringLiteral("limpiar"));
    QPushButton* anular = boton(QStringLiteral("Anular Carrera"), QStringLiteral("anular"));
    gp->addWidget(abrir, 0, 0);
    gp->addWidget(cerrar, 0, 1);
    gp->addWidget(retirar, 1, 0, 1, 2);
    gp->addWidget(new QLabel(QStringLiteral("CABALLO GANADOR")), 2, 0);
    gp->addWidget(ganador_, 2, 1);
    gp->addWidget(procesar, 3, 0, 1, 2);
    gp->addWidget(limpiar, 4, 0);
    gp->addWidget(anular, 4, 1);
    derecha->addWidget(pool);

    auto* grupoPremio = new QGroupBox(QStringLiteral("PREMIO DE UNA TABLA"));
    auto* gpr = new QHBoxLayout(grupoPremio);
    premio_ = caja(QStringLiteral("premio"), nullptr, 12, SoloNumerosComa);
    QPushButton* guardarPremio = boton(QStringLiteral("Guardar"), QStringLiteral("guardarPremio"));
    gpr->addWidget(premio_, 1);
    gpr->addWidget(guardarPremio);
    derecha->addWidget(grupoPremio);

    auto* grupoCupos = new QGroupBox(QStringLiteral("CUPOS DEL CENTRO (TABLAS)"));
    auto* gc = new QVBoxLayout(grupoCupos);
    centro_ = new QComboBox;
    centro_->setObjectName(QStringLiteral("centro"));
    centro_->addItems(opciones_.centros().mid(1));
    cupos_ = new QTableWidget(1, int(kCaballosTablaFija));
    cupos_->setObjectName(QStringLiteral("cupos"));
    cupos_->verticalHeader()->hide();
    cupos_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    cupos_->setMaximumHeight(64);
    gc->addWidget(centro_);
    gc->addWidget(cupos_);
    derecha->addWidget(grupoCupos);

    auto* grupoBoleto = new QGroupBox(QStringLiteral("BOLETO"));
    auto* gb = new QGridLayout(grupoBoleto);
    numero_ = caja(QStringLiteral("numero"), nullptr, 10, SoloNumeros);
    QPushButton* anularBoleto = boton(QStringLiteral("Anular"), QStringLiteral("anularBoleto"));
    QPushButton* pagar = boton(QStringLiteral("Pagar"), QStringLiteral("pagarBoleto"));
    QPushButton* devolver = boton(QStringLiteral("Devolver"), QStringLiteral("devolverBoleto"));
    QPushButton* porCodigo = boton(QStringLiteral("Anular por Código"), QStringLiteral("anularCodigo"));
    gb->addWidget(new QLabel(QStringLiteral("NÚMERO")), 0, 0);
    gb->addWidget(numero_, 0, 1, 1, 2);
    gb->addWidget(anularBoleto, 1, 0);
    gb->addWidget(pagar, 1, 1);
    gb->addWidget(devolver, 1, 2);
    gb->addWidget(porCodigo, 2, 0, 1, 3);
    derecha->addWidget(grupoBoleto);
    derecha->addStretch(1);
    columnas->addLayout(derecha, 2);

    const auto despues = [this](bool) { actualizar(); };
    const auto numero = [this] { return leerEntero(numero_->text()).value_or(0); };
    connect(refrescar, &QPushButton::clicked, this, &Form_Admin_TF::actualizar);
    connect(carrera_, &QComboBox::currentTextChanged, this, &Form_Admin_TF::actualizar);
    connect(hipodromo_, &QComboBox::currentTextChanged, this, &Form_Admin_TF::actualizar);
    connect(fecha_, &QDateEdit::dateChanged, this, &Form_Admin_TF::actualizar);
    connect(abrir, &QPushButton::clicked, this, [=, this] { despues(escritorio_.abrir(seleccion(), true)); });
    connect(cerrar, &QPushButton::clicked, this, [=, this] { despues(escritorio_.abrir(seleccion(), false)); });
    connect(retirar, &QPushButton::clicked, this, [=, this] {
        const int f = caballos_->currentRow();
        if (f < 0) return;
        const bool retirado = caballos_->item(f, kRetirado)->text() == QLatin1String("SI");
        despues(escritorio_.retirar(seleccion(), idDeFila(f), !retirado));
    });
    connect(procesar, &QPushButton::clicked, this,
            [=, this] { despues(escritorio_.procesar(seleccion(), ganador_->text()).has_value()); });
    connect(limpiar, &QPushButton::clicked, this, [=, this] { despues(escritorio_.limpiar(seleccion())); });
    connect(anular, &QPushButton::clicked, this, [=, this] { despues(escritorio_.anularCarrera(seleccion())); });
    connect(guardarPremio, &QPushButton::clicked, this, [=, this] { despues(escritorio_.fijarPremio(premio_->text())); });
    connect(anularBoleto, &QPushButton::clicked, this, [=, this] { despues(boletos_.anularPorNumero(numero())); });
    connect(pagar, &QPushButton::clicked, this, [=, this] { despues(boletos_.pagar(numero())); });
    connect(devolver, &QPushButton::clicked, this, [=, this] { despues(boletos_.devolver(numero())); });
    connect(porCodigo, &QPushButton::clicked, this, [=, this] { despues(boletos_.anularPorCodigo()); });
    connect(caballos_, &QTableWidget::cellChanged, this, &Form_Admin_TF::celdaCambiada);
    connect(centro_, &QComboBox::currentTextChanged, this, &Form_Admin_TF::cargarCupos);
    connect(cupos_, &QTableWidget::cellChanged, this, [this](int, int columna) {
        if (cargando_) return;
        escritorio_.fijarCupo(centro_->currentText(), columna + 1, cupos_->item(0, columna)->text());
        cargarCupos();
    });
    // Sales per horse as the booths sell.
    reloj_ = new QTimer(this);
    reloj_->setInterval(10000);
    connect(reloj_, &QTimer::timeout, this, &Form_Admin_TF::actualizar);
    reloj_->start();
    cargarCupos();
}

long long Form_Admin_TF::idDeFila(int fila) const {
    return caballos_->item(fila, kCab)->data(Qt::UserRole).toLongLong();
}

void Form_Admin_TF::actualizar() {
    const Seleccion s = seleccion();
    cargando_ = true;
    const Recordset filas = escritorio_.caballos(s);
    QVector<CaballoTablaFija> ventas;
    proteger([&] { ventas = caballosTablaFija(ctx_, s.carrera); });
    caballos_->setRowCount(filas.size());
    bool abierta = false, procesada = false;
    int i = 0;
    for (const Row& r : filas) {
        double tablas = 0, venta = 0;
        for (const CaballoTablaFija& v : ventas)
            if (v.numero == r.integer("nu_caballo")) {
                tablas = v.tablas;
                venta = v.venta;
            }
        const QStringList celdas{QString::number(r.integer("nu_caballo")), r.text("caballo"),
                                 textoNumero(r.number("valor_tf")), textoNumero(r.number("apuesta_max_tf")),
                                 r.integer("retirado_tf") ? QStringLiteral("SI") : QStringLiteral("NO"),
                                 textoNumero(tablas), formatoMonto(venta, ctx_.session.enDolares())};
        for (int k = 0; k < kColumnas; ++k) {
            auto* item = new QTableWidgetItem(celdas[k]);
            if (k != kValor && k != kMaximo) item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            caballos_->setItem(i, k, item);
        }
        caballos_->item(i, kCab)->setData(Qt::UserRole, r.integer("id_carrera"));
        abierta = abierta || tablaFijaAbierta(r);
        procesada = procesada || r.integer("estado_tf") != 0;
        ++i;
    }
    estado_->setText(filas.empty()       ? QStringLiteral("SIN CABALLOS")
                     : procesada         ? QStringLiteral("TABLA FIJA PROCESADA")
                     : abierta           ? QStringLiteral("TABLA FIJA ABIERTA")
                                         : QStringLiteral("TABLA FIJA CERRADA"));
    premio_->setText(textoNumero(escritorio_.premio()));
    if (const auto t = escritorio_.totales(s))
        totales_->setText(QStringLiteral("VENTA DEL DÍA: %1     Monto Cobrado :           %2")
                              .arg(formatoMonto(t->venta, ctx_.session.enDolares()),
                                   formatoMonto(t->cobrado, ctx_.session.enDolares())));
    cargando_ = false;
}

void Form_Admin_TF::celdaCambiada(int fila, int columna) {
    if (cargando_ || (columna != kValor && columna != kMaximo)) return;
    const QString valor = caballos_->item(fila, columna)->text();
    if (columna == kValor)
        escritorio_.fijarValor(seleccion(), idDeFila(fila), valor);
    else
        escritorio_.fijarMaximo(seleccion(), idDeFila(fila), valor);
    actualizar();
}

void Form_Admin_TF::cargarCupos() {
    cargando_ = true;
    const auto fila = escritorio_.cupos(centro_->currentText());
    for (int c = 0; c < int(kCaballosTablaFija); ++c)
        cupos_->setItem(0, c, new QTableWidgetItem(fila ? textoNumero(fila->number(QStringLiteral("cab%1").arg(c + 1)))
                                                        : QString()));
    QStringList cabeceras;
    for (int c = 1; c <= int(kCaballosTablaFija); ++c) cabeceras << QString::number(c);
    cupos_->setHorizontalHeaderLabels(cabeceras);
    cargando_ = false;
}

}  // namespace hipico
