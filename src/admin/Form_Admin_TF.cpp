#include "admin/Form_Admin_TF.h"

#include "admin/FilaCarrera.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"
#include "sales/JuegoTablaFija.h"
#include "sales/TicketKeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
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
    const FilaCarrera fila =
        filaCarrera(ctx_, this, raiz,
                    {QStringLiteral("fecha"), seleccionInicial(ctx_).fecha, true, opciones_.hipodromos(),
                     opciones_.hipodromoPorDefecto()},
                    [this] { actualizar(); });
    fecha_ = fila.fecha;
    hipodromo_ = fila.hipodromo;
    carrera_ = fila.carrera;
    reloj_ = fila.reloj;

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
    auto* pestanas = new QTabWidget;
    pestanas->setObjectName(QStringLiteral("pestanas"));
    pestanas->addTab(caballos_, QStringLiteral("CABALLOS"));
    pestanas->addTab(construirBusqueda(), QStringLiteral("BOLETOS"));
    izquierda->addWidget(pestanas, 1);
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
    QPushButton* renumerar = boton(QStringLiteral("Renumerar"), QStringLiteral("renumerar"));
    gb->addWidget(new QLabel(QStringLiteral("NÚMERO")), 0, 0);
    gb->addWidget(numero_, 0, 1, 1, 2);
    gb->addWidget(anularBoleto, 1, 0);
    gb->addWidget(pagar, 1, 1);
    gb->addWidget(devolver, 1, 2);
    gb->addWidget(porCodigo, 2, 0, 1, 2);
    gb->addWidget(renumerar, 2, 2);
    derecha->addWidget(grupoBoleto);
    derecha->addStretch(1);
    columnas->addLayout(derecha, 2);

    const auto despues = [this](bool) { actualizar(); };
    const auto numero = [this] { return leerEntero(numero_->text()).value_or(0); };
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
    // A changed ticket shows at once in the tickets found.
    const auto cambiado = [this](bool hecho) {
        actualizar();
        if (hecho && !boletosModelo_->recordset().empty()) buscar();
    };
    connect(anularBoleto, &QPushButton::clicked, this, [=, this] { cambiado(boletos_.anularPorNumero(numero())); });
    connect(pagar, &QPushButton::clicked, this, [=, this] { cambiado(boletos_.pagar(numero())); });
    connect(devolver, &QPushButton::clicked, this, [=, this] { cambiado(boletos_.devolver(numero())); });
    connect(porCodigo, &QPushButton::clicked, this, [=, this] { cambiado(boletos_.anularPorCodigo()); });
    connect(renumerar, &QPushButton::clicked, this, [=, this] { cambiado(boletos_.renumerar(numero())); });
    connect(caballos_, &QTableWidget::cellChanged, this, &Form_Admin_TF::celdaCambiada);
    connect(centro_, &QComboBox::currentTextChanged, this, &Form_Admin_TF::cargarCupos);
    connect(cupos_, &QTableWidget::cellChanged, this, [this](int, int columna) {
        if (cargando_) return;
        escritorio_.fijarCupo(centro_->currentText(), columna + 1, cupos_->item(0, columna)->text());
        cargarCupos();
    });
    cargarCupos();
}

QWidget* Form_Admin_TF::construirBusqueda() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    auto* filtros = new QHBoxLayout;
    const auto& consulta = BoletosEscritorio::consultaEscritorio();
    clase_ = new QComboBox;
    clase_->setObjectName(QStringLiteral("clase"));
    clase_->addItems(consulta.clases);
    clase_->setCurrentText(QStringLiteral("TODAS"));
    buscaCaballo_ = caja(QStringLiteral("buscaCaballo"), nullptr, 2, SoloNumeros, 60);
    historico_ = new QCheckBox(QStringLiteral("Boletos guardados"));
    historico_->setObjectName(QStringLiteral("historico"));
    QPushButton* botonBuscar = boton(QStringLiteral("Buscar"), QStringLiteral("buscar"));
    QPushButton* imprimir = boton(QStringLiteral("Imprimir"), QStringLiteral("imprimirBusqueda"));
    QPushButton* auditar = boton(QStringLiteral("Auditoría"), QStringLiteral("auditoria"));
    QPushButton* borrar = boton(QStringLiteral("Borrar auditoría"), QStringLiteral("borrarAuditoria"));
    for (QWidget* x : {static_cast<QWidget*>(new QLabel(QStringLiteral("Estatus:"))), static_cast<QWidget*>(clase_),
                       static_cast<QWidget*>(new QLabel(QStringLiteral("Caballo:"))),
                       static_cast<QWidget*>(buscaCaballo_), static_cast<QWidget*>(historico_),
                       static_cast<QWidget*>(botonBuscar)})
        filtros->addWidget(x);
    filtros->addStretch(1);
    raiz->addLayout(filtros);
    boletosModelo_ = new RecordsetModel(w);
    boletosTabla_ = grillaDe(boletosModelo_, QStringLiteral("boletos"), w);
    raiz->addWidget(boletosTabla_, 1);
    boletosTotal_ = new QLabel;
    boletosTotal_->setObjectName(QStringLiteral("boletosTotal"));
    raiz->addWidget(boletosTotal_);
    auto* abajo = new QHBoxLayout;
    for (QPushButton* b : {imprimir, auditar, borrar}) abajo->addWidget(b);
    abajo->addStretch(1);
    raiz->addLayout(abajo);

    connect(botonBuscar, &QPushButton::clicked, this, &Form_Admin_TF::buscar);
    enterEjecuta(buscaCaballo_, [this] { buscar(); });
    // The search printed: the ticket report on the tickets found.
    connect(imprimir, &QPushButton::clicked, this, [this] {
        if (const auto p = boletos_.reporteBusqueda(seleccion(), clase_->currentText(), buscaCaballo_->text(),
                                                    historico_->isChecked()))
            abrirReporteBoletos(ctx_, 1, *p, this);
    });
    // The race's audit: the altered tickets in the grid.
    connect(auditar, &QPushButton::clicked, this, [this] {
        const auto a = boletos_.auditoria(seleccion());
        if (!a) return;
        mostrarBoletos(a->alterados);
        boletosTotal_->setText(QStringLiteral("Auditoría: %1 boletos guardados, %2 boletos de la carrera, %3 alterados")
                                   .arg(a->enAuditoria)
                                   .arg(a->enVentas)
                                   .arg(a->alterados.size()));
    });
    connect(borrar, &QPushButton::clicked, this, [this] { boletos_.borrarAuditoria(seleccion()); });
    // The chosen ticket is the one the ticket commands act on.
    connect(boletosTabla_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& i) {
                if (i.isValid() && boletosModelo_->recordset()[i.row()].has("numero"))
                    numero_->setText(boletosModelo_->recordset()[i.row()].text("numero"));
            });
    return w;
}

void Form_Admin_TF::buscar() {
    const auto b = boletos_.buscar(seleccion(), clase_->currentText(), buscaCaballo_->text(), historico_->isChecked());
    boletosTotal_->clear();
    if (!b) {
        boletosModelo_->setRecordset(Recordset());
        return;
    }
    mostrarBoletos(b->filas);
    const bool d = ctx_.session.enDolares();
    boletosTotal_->setText(QStringLiteral("Boletos: %1    Tablas: %2    Monto: %3    Cobrado: %4    Por cobrar: %5")
                               .arg(b->filas.size())
                               .arg(textoNumero(b->sumaganadores), formatoMonto(b->sumamonto, d),
                                    formatoMonto(b->sumacobrado, d), formatoMonto(b->sumaporcobrar, d)));
}

void Form_Admin_TF::mostrarBoletos(const Recordset& filas) {
    const bool d = ctx_.session.enDolares();
    const auto columna = [](const char* titulo, const char* campo, RecordsetModel::Formatter f = {}) {
        return RecordsetModel::Column{QString::fromLatin1(titulo), QString::fromLatin1(campo), std::move(f)};
    };
    const auto dinero = [d](const char* campo) {
        return [d, c = QString::fromLatin1(campo)](const Row& r) { return formatoMonto(r.number(c), d); };
    };
    // Tickets found carry their selling centre in `ch`, the audit's rows in `taquilla`.
    const char* centro = filas.columnNames().contains(QStringLiteral("ch")) ? "ch" : "taquilla";
    boletosModelo_->setRecordset(filas, {columna(" BOLETO ", "nu_boleto"), columna(" HORA ", "hora"),
                                         columna(" CAR ", "carrera"), columna(" CAB ", "caballo"),
                                         columna(" TABLAS ", "tablas"), columna(" MONTO ", "monto", dinero("monto")),
                                         columna(" COBRADO ", "cobrado", dinero("cobrado")),
                                         columna(" ESTATUS ", "estatus", &BoletosEscritorio::nombreEstatus),
                                         columna(" TAQ ", "grupo"), columna(" CH ", centro)});
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
