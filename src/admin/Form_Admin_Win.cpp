#include "admin/Form_Admin_Win.h"

#include "subastas/PanelSubasta.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"
#include "sales/TicketKeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

// Column suffixes of a runner-count rule, as the grid shows them.
const char* const kCorredoresCampos[] = {"cabr1", "cabr2", "cabvr1", "cabop1", "cabr3", "cabvr2", "cabop2", "cabr4",
                                         "cabr5", "cabr6", "cabvr3", "cabop3", "cabr7", "cabr8", "cabvr4", "cabop4"};
const char* const kCorredoresTitulos[] = {"DESDE", "HASTA", "MONTO", "+CASA", "ABIERTA", "MONTO", "+CASA", "TOPE",
                                          "DESDE 2", "HASTA 2", "MONTO 2", "+CASA 2", "DESDE 3", "HASTA 3",
                                          "MONTO 3", "+CASA 3"};

// A text box of the desk: numbers (with a decimal comma where amounts go), narrow.
QLineEdit* cajaDesk(QWidget* padre, const QString& nombre, FiltroTecla filtro, int ancho = 80) {
    return caja(nombre, padre, 0, filtro, ancho);
}

QComboBox* opciones(const QStringList& textos) {
    auto* c = new QComboBox;
    c->addItems(textos);
    return c;
}

QString valorDe(QWidget* w) {
    if (auto* e = qobject_cast<QLineEdit*>(w)) return e->text();
    if (auto* c = qobject_cast<QComboBox*>(w)) return QString::number(c->currentIndex());
    if (auto* k = qobject_cast<QCheckBox*>(w)) return k->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    return {};
}

void ponerValor(QWidget* w, const QString& v) {
    if (auto* e = qobject_cast<QLineEdit*>(w)) e->setText(v);
    else if (auto* c = qobject_cast<QComboBox*>(w)) c->setCurrentIndex(std::clamp(v.toInt(), 0, c->count() - 1));
    else if (auto* k = qobject_cast<QCheckBox*>(w)) k->setChecked(v.toInt() != 0);
}

QTableWidgetItem* celda(const QString& texto, bool editable = false) {
    auto* i = new QTableWidgetItem(texto);
    if (!editable) i->setFlags(i->flags() & ~Qt::ItemIsEditable);
    return i;
}

// A grid column: caption, field and, when given, how the field is shown.
RecordsetModel::Column col(const char* titulo, const char* campo, RecordsetModel::Formatter formato = {}) {
    RecordsetModel::Column c;
    c.header = QString::fromUtf8(titulo);
    c.field = QString::fromUtf8(campo);
    c.format = std::move(formato);
    return c;
}

QTableView* grilla(QWidget* padre, RecordsetModel*& modelo, const QString& nombre) {
    modelo = new RecordsetModel(padre);
    return grillaDe(modelo, nombre, padre);
}

}  // namespace

Form_Admin_Win::Form_Admin_Win(Context& ctx, QWidget* parent)
    : Form_Admin_Win(ctx, PerfilGanadores::Administracion, QStringLiteral("Form_Admin_Win"), parent) {}

Form_Admin_Win::Form_Admin_Win(Context& ctx, PerfilGanadores perfil, const QString& nombre, QWidget* parent)
    : Ventana(ctx, parent, nombre,
              perfil == PerfilGanadores::Administracion ? QStringLiteral("ADMINISTRACIÓN DE GANADORES")
                                                         : QStringLiteral("Admin: ") + ctx.session.nombre,
              Centrado::SegunAjuste),
      perfil_(perfil),
      alcance_(perfil == PerfilGanadores::GerenciaGrupo      ? alcanceGrupo(ctx.session)
               : perfil == PerfilGanadores::GerenciaSubgrupo ? alcanceSubgrupo(ctx.session)
                                                             : Alcance()),
      opciones_(ctx), gerencia_(ctx), ventasCarrera_(ctx), tarjeta_(ctx), resultado_(ctx),
      cupos_(ctx), reglaCentro_(ctx), descargasGrupo_(ctx), boletosEscritorio_(ctx) {
    setAttribute(Qt::WA_DeleteOnClose);
    // A manager's window reads the group's switches once, as it opens.
    if (gerencia()) switches_ = gerencia_.switches();
    auto* raiz = new QVBoxLayout(this);
    auto* encabezado = new QGroupBox(QStringLiteral("Carrera del día"), this);
    construirEncabezado(encabezado);
    raiz->addWidget(encabezado);

    pestanas_ = new QTabWidget(this);
    pestanas_->setObjectName("pestanas");
    if (gerencia()) pestanas_->addTab(construirVentasGerencia(), QStringLiteral("Ventas"));
    else pestanas_->addTab(construirCarrera(), QStringLiteral("Carrera y resultado"));
    const int cupos = pestanas_->addTab(construirCupos(), QStringLiteral("Cupos"));
    dividendos_ = construirDividendos();
    const int dividendos = pestanas_->addTab(dividendos_, QStringLiteral("Dividendos"));
    pestanas_->addTab(construirDescargas(), QStringLiteral("Descargas y condicionados"));
    pestanas_->addTab(construirBoletos(), QStringLiteral("Boletos"));
    pestanas_->addTab(construirTaquillas(), QStringLiteral("Taquillas"));
    if (gerencia()) {
        pestanas_->addTab(construirMensaje(), QStringLiteral("Mensaje"));
        // The group's switches open the limits and the rule to its manager.
        pestanas_->setTabEnabled(cupos, switches_.admincupo);
        pestanas_->setTabEnabled(dividendos, switches_.admindiv);
    }
    pestanas_->setCornerWidget(esquina_, Qt::TopRightCorner);
    // The manager's rule is read (and a track without one told) as its tab comes to the front.
    if (gerencia())
        connect(pestanas_, &QTabWidget::currentChanged, this, [this] {
            if (pestanas_->currentWidget() == dividendos_) refrescarRegla();
        });
    subasta_ = new PanelSubasta(ctx, [this] { return seleccion(); }, this);
    pestanas_->addTab(subasta_, QStringLiteral("Subasta"));
    raiz->addWidget(pestanas_, 1);

    timer_ = new QTimer(this);
    timer_->setInterval(5000);
    connect(timer_, &QTimer::timeout, this, &Form_Admin_Win::refrescarVentas);
    connect(auto_, &QCheckBox::toggled, this, [this](bool on) { on ? timer_->start() : timer_->stop(); });

    resize(1280, 780);
    refrescar();
    primerFoco(carrera_);
}

void Form_Admin_Win::construirEncabezado(QWidget* panel) {
    auto* fila = new QHBoxLayout(panel);
    cargando_ = true;
    fecha_ = new QDateEdit(panel);
    fecha_->setObjectName("fecha");
    fecha_->setDisplayFormat("dd-MM-yyyy");
    fecha_->setCalendarPopup(true);
    const Seleccion inicial = seleccionInicial(ctx_);
    fecha_->setDate(desdeFechaSql(inicial.fecha));
    hipodromo_ = new QComboBox(panel);
    hipodromo_->setObjectName("hipodromo");
    hipodromo_->addItems(opciones_.hipodromos());
    hipodromo_->setCurrentText(opciones_.hipodromoPorDefecto());
    carrera_ = new QSpinBox(panel);
    carrera_->setObjectName("carrera");
    carrera_->setRange(1, 30);
    carrera_->setValue(int(inicial.carrera));
    centro_ = new QComboBox(panel);
    centro_->setObjectName("centro");
    centro_->addItems(opciones_.centros(alcance_));
    grupo_ = new QComboBox(panel);
    grupo_->setObjectName("grupo");
    cargando_ = false;
    llenarGrupos();
    if (perfil_ == PerfilGanadores::GerenciaGrupo) {
        // The centre manager works on the own centre and group only.
        cargando_ = true;
        centro_->setCurrentText(ctx_.session.ch);
        cargando_ = false;
        llenarGrupos();
        grupo_->setCurrentText(ctx_.session.grupo);
        centro_->setEnabled(false);
        grupo_->setEnabled(false);
    }
    auto_ = new QCheckBox(QStringLiteral("Actualizar cada 5 s"), panel);
    auto_->setObjectName("auto");
    auto* actualizar = boton(QStringLiteral("Actualizar"), "actualizar", panel);

    fila->addWidget(new QLabel(QStringLiteral("Fecha:"), panel));
    fila->addWidget(fecha_);
    fila->addWidget(new QLabel(QStringLiteral("Hipódromo:"), panel));
    fila->addWidget(hipodromo_);
    fila->addWidget(new QLabel(QStringLiteral("Carrera:"), panel));
    fila->addWidget(carrera_);
    fila->addWidget(new QLabel(QStringLiteral("Centro hípico:"), panel));
    fila->addWidget(centro_);
    fila->addWidget(new QLabel(QStringLiteral("Grupo:"), panel));
    fila->addWidget(grupo_);
    fila->addStretch(1);
    // The refresh beside the tabs, so that the header fits a 1024-pixel screen.
    auto* refresco = new QWidget;
    auto* r = new QHBoxLayout(refresco);
    r->setContentsMargins(0, 0, 0, 2);
    r->addWidget(auto_);
    r->addWidget(actualizar);
    esquina_ = refresco;

    auto cambio = [this] {
        if (!cargando_) refrescar();
    };
    connect(fecha_, &QDateEdit::dateChanged, this, cambio);
    connect(hipodromo_, &QComboBox::currentTextChanged, this, cambio);
    connect(carrera_, &QSpinBox::valueChanged, this, cambio);
    connect(centro_, &QComboBox::currentTextChanged, this, [this] {
        if (cargando_) return;
        llenarGrupos();
        refrescar();
    });
    connect(grupo_, &QComboBox::currentTextChanged, this, cambio);
    connect(actualizar, &QPushButton::clicked, this, &Form_Admin_Win::refrescar);
}

QVBoxLayout* Form_Admin_Win::columnaVentas(QWidget* w) {
    auto* columna = new QVBoxLayout;
    ventas_ = new QListWidget(w);
    ventas_->setObjectName("ventas");
    ventas_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ventas_->setMinimumWidth(gerencia() ? 330 : 200);
    columna->addWidget(ventas_, 1);
    dia_ = new QLabel(w);
    dia_->setObjectName("dia");
    columna->addWidget(dia_);
    return columna;
}

QWidget* Form_Admin_Win::construirCarrera() {
    auto* w = new QWidget;
    auto* fila = new QHBoxLayout(w);

    // Sales per horse and the day's totals.
    fila->addLayout(columnaVentas(w));

    // The race's horses with their cells.
    auto* centro = new QVBoxLayout;
    carreraTabla_ = new QTableWidget(w);
    carreraTabla_->setObjectName("carreraTabla");
    carreraTabla_->setColumnCount(9);
    carreraTabla_->setHorizontalHeaderLabels({" ID ", " Nº ", " CABALLO ", " FAV ", " RETIRADO ", " ESTADO ",
                                              " APUESTA MAX ", " PUESTO ", " LLEGADA "});
    carreraTabla_->verticalHeader()->hide();
    carreraTabla_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    carreraTabla_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    connect(carreraTabla_, &QTableWidget::cellChanged, this, &Form_Admin_Win::celdaCarrera);
    centro->addWidget(carreraTabla_, 1);

    auto* ventasCaja = new QGroupBox(QStringLiteral("Venta de la carrera"), w);
    auto* sw = new QGridLayout(ventasCaja);
    swGanadores_ = new QCheckBox(QStringLiteral("Ganadores"), ventasCaja);
    swRemate_ = new QCheckBox(QStringLiteral("Remate"), ventasCaja);
    swMacuare_ = new QCheckBox(QStringLiteral("Macuare"), ventasCaja);
    swTablaFija_ = new QCheckBox(QStringLiteral("Tabla fija"), ventasCaja);
    swPuestos_ = new QCheckBox(QStringLiteral("Puestos"), ventasCaja);
    int c = 0;
    for (QCheckBox* k : {swGanadores_, swRemate_, swMacuare_, swTablaFija_, swPuestos_}) sw->addWidget(k, 0, c++);
    auto* guardarVentas = boton(QStringLiteral("Guardar ventas"), "guardarVentas", ventasCaja);
    auto* abrir = boton(QStringLiteral("Abrir carrera"), "abrirCarrera", ventasCaja);
    auto* cerrar = boton(QStringLiteral("Cerrar carrera"), "cerrarCarrera", ventasCaja);
    sw->addWidget(guardarVentas, 1, 0, 1, 2);
    sw->addWidget(abrir, 1, 2, 1, 2);
    sw->addWidget(cerrar, 1, 4);
    centro->addWidget(ventasCaja);
    fila->addLayout(centro, 2);

    connect(guardarVentas, &QPushButton::clicked, this, [this] {
        TarjetaCarrera::Switches s;
        s.ganadores = swGanadores_->isChecked();
        s.remate = swRemate_->isChecked();
        s.macuare = swMacuare_->isChecked();
        s.tablaFija = swTablaFija_->isChecked();
        s.puestos = swPuestos_->isChecked();
        tarjeta_.guardarSwitches(seleccion(), s);
        refrescarCarrera();
    });
    connect(abrir, &QPushButton::clicked, this, [this] {
        tarjeta_.guardarCarrera(seleccion(), true);
        refrescarCarrera();
    });
    connect(cerrar, &QPushButton::clicked, this, [this] {
        tarjeta_.guardarCarrera(seleccion(), false);
        refrescarCarrera();
    });

    // Result.
    auto* derecha = new QVBoxLayout;
    auto* resultado = new QGroupBox(QStringLiteral("Resultado"), w);
    auto* form = new QFormLayout(resultado);
    ganador_ = cajaDesk(resultado, "ganador", SoloNumeros);
    dividendo_ = cajaDesk(resultado, "dividendo", SoloNumerosComa);
    ganador2_ = cajaDesk(resultado, "ganador2", SoloNumeros);
    dividendo2_ = cajaDesk(resultado, "dividendo2", SoloNumerosComa);
    oficial_ = new QCheckBox(QStringLiteral("Pagar el dividendo oficial"), resultado);
    oficial_->setObjectName("oficial");
    auto* procesar = boton(QStringLiteral("Procesar carrera"), "procesar", resultado);
    form->addRow(QStringLiteral("Caballo ganador:"), ganador_);
    form->addRow(QStringLiteral("Dividendo:"), dividendo_);
    form->addRow(QStringLiteral("2º ganador (empate):"), ganador2_);
    form->addRow(QStringLiteral("Dividendo 2:"), dividendo2_);
    form->addRow(oficial_);
    form->addRow(procesar);
    for (QLineEdit* e : {ganador_, dividendo_, ganador2_}) EnterMovesOn::install(e);
    EnterMovesOn::install(dividendo2_, [procesar] {
        procesar->setFocus();
        return true;
    });
    derecha->addWidget(resultado);

    proceso_ = new QTableWidget(w);
    proceso_->setObjectName("proceso");
    proceso_->setColumnCount(5);
    proceso_->setHorizontalHeaderLabels({" GRUPO ", " CH ", " CAB ", " DIVIDENDO ", " BOLETOS "});
    proceso_->verticalHeader()->hide();
    proceso_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    proceso_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    derecha->addWidget(proceso_, 1);

    auto* anulaciones = new QGroupBox(QStringLiteral("Anulaciones"), w);
    auto* an = new QGridLayout(anulaciones);
    auto* limpiar = boton(QStringLiteral("Limpiar carrera"), "limpiar", anulaciones);
    auto* anular = boton(QStringLiteral("Anular carrera"), "anularCarrera", anulaciones);
    auto* cuatro = boton(QStringLiteral("Devolver 4 caballos"), "cuatroCaballos", anulaciones);
    retirar_ = cajaDesk(anulaciones, "retirarCaballo", SoloNumeros, 50);
    auto* retirar = boton(QStringLiteral("Retirar caballo"), "retirar", anulaciones);
    an->addWidget(limpiar, 0, 0);
    an->addWidget(anular, 0, 1);
    an->addWidget(cuatro, 1, 0, 1, 2);
    an->addWidget(retirar_, 2, 0);
    an->addWidget(retirar, 2, 1);
    derecha->addWidget(anulaciones);
    fila->addLayout(derecha, 1);

    connect(procesar, &QPushButton::clicked, this, [this] {
        if (const auto r = resultado_.procesar(seleccion(), ganador_->text(), dividendo_->text(), ganador2_->text(),
                                               dividendo2_->text(), oficial_->isChecked()))
            mostrarProceso(*r);
        refrescarVentas();
        refrescarCarrera();
    });
    connect(limpiar, &QPushButton::clicked, this, [this] {
        resultado_.limpiar(seleccion());
        refrescarVentas();
    });
    connect(anular, &QPushButton::clicked, this, [this] {
        resultado_.anular(seleccion());
        refrescarVentas();
    });
    connect(cuatro, &QPushButton::clicked, this, [this] {
        resultado_.devolverCuatroCaballos(seleccion());
        refrescarVentas();
    });
    connect(retirar, &QPushButton::clicked, this, [this] {
        resultado_.retirarCaballo(seleccion(), retirar_->text());
        refrescarVentas();
    });
    return w;
}

QWidget* Form_Admin_Win::construirCupos() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    auto* grid = new QGridLayout;
    for (int i = 1; i <= 16; ++i) {
        auto* e = cajaDesk(w, QStringLiteral("cab%1").arg(i), SoloNumerosComa, 100);
        cuposCajas_ << e;
        grid->addWidget(new QLabel(QStringLiteral("Caballo %1").arg(i), w), (i - 1) / 4, ((i - 1) % 4) * 2);
        grid->addWidget(e, (i - 1) / 4, ((i - 1) % 4) * 2 + 1);
        // Each edited limit is saved alone.
        connect(e, &QLineEdit::editingFinished, this, [this, e, i] {
            if (cargando_ || !e->isModified()) return;
            e->setModified(false);
            cupos_.guardarCupo(seleccion(), i, e->text());
            refrescarVentas();
        });
    }
    grid->setColumnStretch(8, 1);
    raiz->addWidget(new QLabel(QStringLiteral("Cupos de venta por caballo del centro hípico elegido (en ganadores)"), w));
    avisoCupos_ = new QLabel(w);
    avisoCupos_->setObjectName("avisoCupos");
    raiz->addWidget(avisoCupos_);
    raiz->addLayout(grid);
    auto* todos = boton(QStringLiteral("Guardar todos los cupos"), "guardarCupos", w);
    connect(todos, &QPushButton::clicked, this, [this] {
        QStringList v;
        for (QLineEdit* e : cuposCajas_) v << e->text();
        cupos_.guardarCupos(seleccion(), v);
        refrescarCupos();
        refrescarVentas();
    });
    auto* pie = new QHBoxLayout;
    pie->addWidget(todos);
    if (gerencia()) {
        // The manager's block and restore of horses 1 to 14.
        auto* bloquear = boton(QStringLiteral("Bloquear ventas"), "bloquearCupos", w);
        auto* restaurar = boton(QStringLiteral("Restaurar cupos"), "restaurarCupos", w);
        connect(bloquear, &QPushButton::clicked, this, [this] {
            cupos_.bloquear(seleccion());
            refrescarCupos();
            refrescarVentas();
        });
        connect(restaurar, &QPushButton::clicked, this, [this] {
            cupos_.restaurar(seleccion());
            refrescarCupos();
            refrescarVentas();
        });
        pie->addWidget(bloquear);
        pie->addWidget(restaurar);
    }
    pie->addStretch(1);
    raiz->addLayout(pie);
    raiz->addStretch(1);
    return w;
}

QWidget* Form_Admin_Win::construirDividendos() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    auto* arriba = new QHBoxLayout;

    auto* bandas = new QGroupBox(QStringLiteral("Bandas del dividendo oficial"), w);
    auto* g = new QGridLayout(bandas);
    int f = 0;
    int c = 0;
    for (const char* t : {"", "DESDE", "HASTA", "MONTO", "OPCION"}) g->addWidget(new QLabel(t, bandas), f, c++);
    for (int k = 1; k <= 4; ++k) {
        ++f;
        g->addWidget(new QLabel(QStringLiteral("Banda %1").arg(k), bandas), f, 0);
        regla_["rango" + QString::number(2 * k - 1)] = cajaDesk(bandas, "rango" + QString::number(2 * k - 1), SoloNumerosComa);
        regla_["rango" + QString::number(2 * k)] = cajaDesk(bandas, "rango" + QString::number(2 * k), SoloNumerosComa);
        regla_["valor_r" + QString::number(k)] = cajaDesk(bandas, "valor_r" + QString::number(k), SoloNumerosComa);
        regla_["opciondiv" + QString::number(k)] = opciones({"Fijo", "+ Casa"});
        g->addWidget(regla_["rango" + QString::number(2 * k - 1)], f, 1);
        g->addWidget(regla_["rango" + QString::number(2 * k)], f, 2);
        g->addWidget(regla_["valor_r" + QString::number(k)], f, 3);
        g->addWidget(regla_["opciondiv" + QString::number(k)], f, 4);
    }
    ++f;
    g->addWidget(new QLabel(QStringLiteral("Banda 5 (desde / tope / + monto)"), bandas), f, 0);
    regla_["rango9"] = cajaDesk(bandas, "rango9", SoloNumerosComa);
    regla_["rango10"] = cajaDesk(bandas, "rango10", SoloNumerosComa);
    regla_["valor_r5"] = cajaDesk(bandas, "valor_r5", SoloNumerosComa);
    g->addWidget(regla_["rango9"], f, 1);
    g->addWidget(regla_["rango10"], f, 2);
    g->addWidget(regla_["valor_r5"], f, 3);
    g->setRowStretch(f + 1, 1);
    arriba->addWidget(bandas);

    auto* modo = new QGroupBox(QStringLiteral("Modo, topes y empate"), w);
    auto* m = new QFormLayout(modo);
    regla_["divopc"] = opciones({"Reglas y bandas", "Oficial + monto de la banda 1"});
    regla_["mododiv"] = opciones({"Por unidad", "Por dos unidades"});
    regla_["topefavorito"] = cajaDesk(modo, "topefavorito", SoloNumerosComa);
    regla_["condicionado"] = new QCheckBox(QStringLiteral("Pagar el monto condicionado"), modo);
    regla_["redondear"] = new QCheckBox(QStringLiteral("Redondear el dividendo"), modo);
    regla_["empate"] = opciones({"La Mitad", "General", "General + Minimo"});
    regla_["empatemin"] = cajaDesk(modo, "empatemin", SoloNumerosComa);
    m->addRow(QStringLiteral("Modo:"), regla_["divopc"]);
    m->addRow(QStringLiteral("Banda abierta:"), regla_["mododiv"]);
    m->addRow(QStringLiteral("Tope del favorito:"), regla_["topefavorito"]);
    m->addRow(regla_["condicionado"]);
    m->addRow(regla_["redondear"]);
    m->addRow(QStringLiteral("Empate:"), regla_["empate"]);
    m->addRow(QStringLiteral("Mínimo del empate:"), regla_["empatemin"]);
    auto* minimos = new QHBoxLayout;
    for (int k = 1; k <= 5; ++k) {
        regla_["empate" + QString::number(k)] = cajaDesk(modo, "empate" + QString::number(k), SoloNumerosComa, 50);
        minimos->addWidget(regla_["empate" + QString::number(k)]);
    }
    m->addRow(QStringLiteral("Mínimo por banda:"), minimos);
    arriba->addWidget(modo);
    raiz->addLayout(arriba);

    auto* porCorredores = new QGroupBox(QStringLiteral("Reglas por cantidad de caballos (monto -1 en la banda abierta: se devuelven las jugadas)"), w);
    auto* pc = new QVBoxLayout(porCorredores);
    corredores_ = new QTableWidget(4, 16, porCorredores);
    corredores_->setObjectName("corredores");
    QStringList titulos;
    for (const char* t : kCorredoresTitulos) titulos << t;
    corredores_->setHorizontalHeaderLabels(titulos);
    corredores_->setVerticalHeaderLabels({"4 CAB", "5 CAB", "6 CAB", "7 CAB"});
    corredores_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    pc->addWidget(corredores_);
    raiz->addWidget(porCorredores, 1);

    avisoRegla_ = new QLabel(w);
    avisoRegla_->setObjectName("avisoRegla");
    raiz->addWidget(avisoRegla_);
    auto* guardar = boton(QStringLiteral("Guardar regla de dividendos"), "guardarRegla", w);
    connect(guardar, &QPushButton::clicked, this, [this] {
        QMap<QString, QString> campos;
        for (auto it = regla_.cbegin(); it != regla_.cend(); ++it) campos.insert(it.key(), valorDe(it.value()));
        for (int n = 4; n <= 7; ++n)
            for (int c = 0; c < 16; ++c) {
                const QTableWidgetItem* i = corredores_->item(n - 4, c);
                campos.insert(QString::number(n) + kCorredoresCampos[c], i ? i->text() : QString());
            }
        if (reglaCentro_.guardar(seleccion(), campos)) refrescarRegla();
    });
    auto* pie = new QHBoxLayout;
    pie->addWidget(guardar);
    pie->addStretch(1);
    raiz->addLayout(pie);
    return w;
}

QWidget* Form_Admin_Win::construirDescargas() {
    auto* w = new QWidget;
    auto* fila = new QHBoxLayout(w);

    auto* desc = new QGroupBox(QStringLiteral("Descargas del grupo"), w);
    auto* d = new QVBoxLayout(desc);
    auto* entrada = new QHBoxLayout;
    descargaCaballo_ = cajaDesk(desc, "descargaCaballo", SoloNumeros, 60);
    descargaMonto_ = cajaDesk(desc, "descargaMonto", SoloNumerosComa);
    auto* registrar = boton(QStringLiteral("Registrar descarga"), "registrarDescarga", desc);
    entrada->addWidget(new QLabel(QStringLiteral("Caballo:"), desc));
    entrada->addWidget(descargaCaballo_);
    entrada->addWidget(new QLabel(QStringLiteral("Ganadores:"), desc));
    entrada->addWidget(descargaMonto_);
    entrada->addWidget(registrar);
    entrada->addStretch(1);
    d->addLayout(entrada);
    descargasTabla_ = grilla(desc, descargasModelo_, "descargasTabla");
    d->addWidget(descargasTabla_, 1);
    descargasTotal_ = new QLabel(desc);
    descargasTotal_->setObjectName("descargasTotal");
    d->addWidget(descargasTotal_);
    EnterMovesOn::install(descargaCaballo_);
    EnterMovesOn::install(descargaMonto_, [registrar] {
        registrar->click();
        return true;
    });
    connect(registrar, &QPushButton::clicked, this, [this] {
        if (descargasGrupo_.registrarDescarga(seleccion(), descargaCaballo_->text(), descargaMonto_->text())) {
            descargaCaballo_->clear();
            descargaMonto_->clear();
            descargaCaballo_->setFocus();
        }
        refrescarDescargas();
    });
    fila->addWidget(desc, 1);

    auto* cond = new QGroupBox(QStringLiteral("Condicionados del grupo en la carrera"), w);
    auto* c = new QVBoxLayout(cond);
    auto* entradaC = new QHBoxLayout;
    condCaballo_ = cajaDesk(cond, "condCaballo", SoloNumeros, 60);
    condMonto_ = cajaDesk(cond, "condMonto", SoloNumerosComa);
    auto* registrarC = boton(QStringLiteral("Registrar condicionado"), "registrarCondicionado", cond);
    auto* eliminar = boton(QStringLiteral("Eliminar"), "eliminarCondicionado", cond);
    entradaC->addWidget(new QLabel(QStringLiteral("Caballo:"), cond));
    entradaC->addWidget(condCaballo_);
    entradaC->addWidget(new QLabel(QStringLiteral("Dividendo:"), cond));
    entradaC->addWidget(condMonto_);
    entradaC->addWidget(registrarC);
    entradaC->addWidget(eliminar);
    entradaC->addStretch(1);
    c->addLayout(entradaC);
    condTabla_ = grilla(cond, condModelo_, "condTabla");
    c->addWidget(condTabla_, 1);
    EnterMovesOn::install(condCaballo_);
    EnterMovesOn::install(condMonto_, [registrarC] {
        registrarC->click();
        return true;
    });
    connect(registrarC, &QPushButton::clicked, this, [this] {
        if (descargasGrupo_.registrarCondicionado(seleccion(), condCaballo_->text(), condMonto_->text())) {
            condCaballo_->clear();
            condMonto_->clear();
        }
        refrescarDescargas();
    });
    connect(eliminar, &QPushButton::clicked, this, [this] {
        const QModelIndex i = condTabla_->currentIndex();
        if (!i.isValid()) return;
        descargasGrupo_.eliminarCondicionado(condModelo_->recordset()[i.row()].integer("id_condicionado"), alcance_);
        refrescarDescargas();
    });
    fila->addWidget(cond, 1);
    return w;
}

QWidget* Form_Admin_Win::construirBoletos() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    auto* filtros = new QHBoxLayout;
    clase_ = new QComboBox(w);
    clase_->setObjectName("clase");
    const auto& consulta =
        gerencia() ? BoletosEscritorio::consultaGerencia() : BoletosEscritorio::consultaEscritorio();
    clase_->addItems(consulta.clases);
    clase_->setCurrentText("TODAS");
    buscaCaballo_ = cajaDesk(w, "buscaCaballo", SoloNumeros, 60);
    historico_ = new QCheckBox(QStringLiteral("Boletos guardados"), w);
    historico_->setObjectName("historico");
    auto* botonBuscar = boton(QStringLiteral("Buscar"), "buscar", w);
    if (consulta.rango) {
        // The manager searches a range of races: from the header's race to this one.
        hasta_ = new QSpinBox(w);
        hasta_->setObjectName("hasta");
        hasta_->setRange(1, 30);
        hasta_->setValue(12);
        filtros->addWidget(new QLabel(QStringLiteral("Hasta la carrera:"), w));
        filtros->addWidget(hasta_);
    }
    filtros->addWidget(new QLabel(QStringLiteral("Estatus:"), w));
    filtros->addWidget(clase_);
    filtros->addWidget(new QLabel(QStringLiteral("Caballo:"), w));
    filtros->addWidget(buscaCaballo_);
    filtros->addWidget(historico_);
    filtros->addWidget(botonBuscar);
    // The search printed: the ticket report window on the tickets found.
    auto* imprimir = boton(QStringLiteral("Imprimir"), "imprimirBusqueda", w);
    filtros->addWidget(imprimir);
    connect(imprimir, &QPushButton::clicked, this, [this, c = &consulta] {
        if (const auto p = boletosEscritorio_.reporteBusqueda(seleccion(), clase_->currentText(), buscaCaballo_->text(),
                                                              historico_->isChecked(), *c,
                                                              hasta_ ? hasta_->value() : 0))
            abrirReporteBoletos(ctx_, 1, *p, this);
    });
    // The group's switch opens the ticket listing to its manager.
    if (gerencia())
        for (QWidget* b : {static_cast<QWidget*>(imprimir), static_cast<QWidget*>(botonBuscar)})
            b->setEnabled(switches_.visualBoletos);
    filtros->addStretch(1);
    raiz->addLayout(filtros);
    connect(botonBuscar, &QPushButton::clicked, this, &Form_Admin_Win::buscar);
    EnterMovesOn::install(buscaCaballo_, [botonBuscar] {
        botonBuscar->click();
        return true;
    });

    boletos_ = grilla(w, boletosModelo_, "boletos");
    raiz->addWidget(boletos_, 1);
    boletosTotal_ = new QLabel(w);
    boletosTotal_->setObjectName("boletosTotal");
    raiz->addWidget(boletosTotal_);
    connect(boletos_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& i) {
                if (i.isValid() && boletosModelo_->recordset()[i.row()].has("numero"))
                    numero_->setText(boletosModelo_->recordset()[i.row()].text("numero"));
            });

    auto* comandos = new QHBoxLayout;
    numero_ = cajaDesk(w, "numero", SoloNumeros, 100);
    comandos->addWidget(new QLabel(QStringLiteral("Nº de boleto:"), w));
    comandos->addWidget(numero_);
    struct Comando {
        const char* texto;
        const char* nombre;
        std::function<bool()> fn;
    };
    const QVector<Comando> gerente = {
        {"Anular", "anularGerencia",
         [this] { return boletosEscritorio_.anularGerencia(alcance_, switches_.pedirMotivo); }},
        {"Anular por número", "anularNumero",
         [this] { return boletosEscritorio_.anularPorNumero(numeroBoleto(), alcance_); }},
        {"Anular Macuare", "anularMacuare", [this] { return boletosEscritorio_.anularMacuare(alcance_); }},
    };
    const QVector<Comando> administrador = {
        {"Anular", "anularNumero", [this] { return boletosEscritorio_.anularPorNumero(numeroBoleto()); }},
        {"Anular por código", "anularCodigo", [this] { return boletosEscritorio_.anularPorCodigo(); }},
        {"Pagar", "pagar", [this] { return boletosEscritorio_.pagar(numeroBoleto()); }},
        {"Devolver", "devolver", [this] { return boletosEscritorio_.devolver(numeroBoleto()); }},
        {"Renumerar", "renumerar", [this] { return boletosEscritorio_.renumerar(numeroBoleto()); }},
        {"Anular Macuare", "anularMacuare", [this] { return boletosEscritorio_.anularMacuare(); }},
    };
    for (const Comando& c : gerencia() ? gerente : administrador) {
        auto* b = boton(QString::fromUtf8(c.texto), c.nombre, w);
        connect(b, &QPushButton::clicked, this, [this, fn = c.fn] {
            if (fn() && !boletosModelo_->recordset().empty()) buscar();
        });
        // The group's switch opens the voids to its manager.
        b->setEnabled(!gerencia() || switches_.gerenteEliminar);
        comandos->addWidget(b);
    }
    comandos->addStretch(1);
    if (gerencia()) {
        raiz->addLayout(comandos);
        return w;
    }
    auto* auditar = boton(QStringLiteral("Auditoría"), "auditoria", w);
    auto* borrar = boton(QStringLiteral("Borrar auditoría"), "borrarAuditoria", w);
    comandos->addWidget(auditar);
    comandos->addWidget(borrar);
    connect(auditar, &QPushButton::clicked, this, [this] {
        const auto a = boletosEscritorio_.auditoria(seleccion());
        if (!a) return;
        boletosModelo_->setRecordset(a->alterados, {col(" BOLETO ", "nu_boleto"),
                                                    col(" HORA ", "hora"),
                                                    col(" CAR ", "carrera"),
                                                    col(" CAB ", "caballo"),
                                                    col(" GANAD ", "monto"),
                                                    col(" ESTATUS ", "estatus"),
                                                    col(" TAQ ", "grupo"),
                                                    col(" CH ", "taquilla")});
        boletosTotal_->setText(QStringLiteral("Auditoría: %1 boletos guardados, %2 boletos de la carrera, %3 alterados")
                                   .arg(a->enAuditoria)
                                   .arg(a->enVentas)
                                   .arg(a->alterados.size()));
    });
    connect(borrar, &QPushButton::clicked, this, [this] {
        boletosEscritorio_.borrarAuditoria(seleccion());
    });
    raiz->addLayout(comandos);
    return w;
}

QWidget* Form_Admin_Win::construirTaquillas() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    raiz->addWidget(new QLabel(QStringLiteral("Taquillas del grupo elegido"), w));
    taquillas_ = grilla(w, taquillasModelo_, "taquillas");
    raiz->addWidget(taquillas_, 1);
    if (perfil_ == PerfilGanadores::GerenciaSubgrupo) {
        auto* fila = new QHBoxLayout;
        supervisor_ = new QComboBox(w);
        supervisor_->setObjectName("supervisorTF");
        supervisor_->addItems(gerencia_.supervisoresTF());
        supervisor_->setCurrentText(gerencia_.supervisorTF());
        auto* guardar = boton(QStringLiteral("Guardar supervisor"), "guardarSupervisor", w);
        connect(guardar, &QPushButton::clicked, this,
                [this] { gerencia_.guardarSupervisorTF(supervisor_->currentText()); });
        fila->addWidget(new QLabel(QStringLiteral("Supervisor de tabla fija:"), w));
        fila->addWidget(supervisor_);
        fila->addWidget(guardar);
        fila->addStretch(1);
        raiz->addLayout(fila);
    }
    return w;
}

QWidget* Form_Admin_Win::construirVentasGerencia() {
    auto* w = new QWidget;
    auto* fila = new QHBoxLayout(w);
    QVBoxLayout* izquierda = columnaVentas(w);
    auto* contacto = new QLabel(QStringLiteral("Administrador: %1    Técnico: %2")
                                    .arg(switches_.nuAdministrador, switches_.nuTecnico),
                                w);
    contacto->setObjectName("contacto");
    izquierda->addWidget(contacto);
    if (perfil_ == PerfilGanadores::GerenciaSubgrupo) {
        auto* limpiar = boton(QStringLiteral("Limpiar dividendos"), "limpiarDividendos", w);
        connect(limpiar, &QPushButton::clicked, this, [this] {
            resultado_.limpiarDividendos(seleccion());
            refrescarVentas();
        });
        izquierda->addWidget(limpiar);
    }
    fila->addLayout(izquierda, 1);

    auto* taquillas = new QGroupBox(QStringLiteral("Ventas por taquilla"), w);
    auto* t = new QVBoxLayout(taquillas);
    auto* filtros = new QHBoxLayout;
    taqHasta_ = new QSpinBox(taquillas);
    taqHasta_->setObjectName("taqHasta");
    taqHasta_->setRange(1, 30);
    taqHasta_->setValue(12);
    taqTodas_ = new QCheckBox(QStringLiteral("TODAS"), taquillas);
    taqTodas_->setObjectName("taqTodas");
    taqTodas_->setChecked(true);
    auto* ver = boton(QStringLiteral("Ver ventas"), "verTaquillas", taquillas);
    filtros->addWidget(new QLabel(QStringLiteral("Carreras desde la del encabezado hasta:"), taquillas));
    filtros->addWidget(taqHasta_);
    filtros->addWidget(taqTodas_);
    filtros->addWidget(ver);
    filtros->addStretch(1);
    t->addLayout(filtros);
    taqLista_ = new QListWidget(taquillas);
    taqLista_->setObjectName("taqLista");
    taqLista_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    t->addWidget(taqLista_, 1);
    connect(ver, &QPushButton::clicked, this, &Form_Admin_Win::refrescarTaquillasVentas);
    fila->addWidget(taquillas, 2);
    return w;
}

QWidget* Form_Admin_Win::construirMensaje() {
    auto* w = new QWidget;
    auto* raiz = new QVBoxLayout(w);
    auto* caja = new QGroupBox(QStringLiteral("Mensaje a las taquillas del grupo"), w);
    auto* m = new QHBoxLayout(caja);
    mensaje_ = new QLineEdit(caja);
    mensaje_->setObjectName("mensaje");
    mensaje_->setMaxLength(255);
    auto* guardar = boton(QStringLiteral("Guardar mensaje"), "guardarMensaje", caja);
    auto* borrar = boton(QStringLiteral("Borrar mensaje"), "borrarMensaje", caja);
    m->addWidget(mensaje_, 1);
    m->addWidget(guardar);
    m->addWidget(borrar);
    connect(guardar, &QPushButton::clicked, this, [this] {
        gerencia_.guardarMensaje(mensaje_->text());
        refrescarMensaje();
    });
    connect(borrar, &QPushButton::clicked, this, [this] {
        gerencia_.borrarMensaje();
        refrescarMensaje();
    });
    raiz->addWidget(caja);
    raiz->addStretch(1);
    return w;
}

// ---------------------------------------------------------------- refresh

Seleccion Form_Admin_Win::seleccion() const {
    Seleccion s;
    s.fecha = fechaSql(fecha_->date());
    s.hipodromo = hipodromo_->currentText();
    s.carrera = carrera_->value();
    s.centro = centro_->currentText();
    s.grupo = grupo_->currentText();
    s.alcance = alcance_;
    return s;
}

void Form_Admin_Win::llenarGrupos() {
    cargando_ = true;
    const QString antes = grupo_->currentText();
    grupo_->clear();
    grupo_->addItems(opciones_.grupos(centro_->currentText(), alcance_));
    if (grupo_->findText(antes) >= 0) grupo_->setCurrentText(antes);
    cargando_ = false;
}

void Form_Admin_Win::refrescar() {
    refrescarVentas();
    if (gerencia()) {
        refrescarTaquillasVentas();
        refrescarMensaje();
    } else {
        refrescarCarrera();
    }
    refrescarCupos();
    refrescarRegla();
    refrescarDescargas();
    refrescarTaquillas();
    subasta_->refrescar();
}

void Form_Admin_Win::refrescarVentas() {
    // The manager's sales count every ticket; the group's switch drops the status term.
    const auto conteo = !gerencia()              ? VentasCarrera::Conteo::SinAnulados
                        : switches_.noSumarRet ? VentasCarrera::Conteo::TerminoDevoluciones
                                               : VentasCarrera::Conteo::Todos;
    const Seleccion sel = seleccion();
    const VentasCarrera::VentasCaballos v = ventasCarrera_.ventasPorCaballo(sel, conteo);
    ventas_->clear();
    // The manager sees each horse's limit of the chosen centre beside its sales.
    ventas_->addItems(ventasCarrera_.lineasVentas(v, gerencia() ? cupos_.leer(sel) : std::nullopt));
    const VentasCarrera::VentasDia d = ventasCarrera_.ventasDelDia(seleccion());
    const bool dolar = ctx_.session.enDolares();
    if (gerencia()) {
        dia_->setText(QStringLiteral("Venta del día: %1 ganadores (%2)\nMonto Cobrado :           %3")
                          .arg(QLocale(QLocale::English).toString(d.unidades, 'f', 0), formatoMonto(d.monto, dolar),
                               formatoMonto(d.cobradoYPorCobrar, dolar)));
        return;
    }
    dia_->setText(QStringLiteral("Venta del día: %1 ganadores (%2)\n Monto Cobrado: %3\n Cobrado y por cobrar: %4")
                      .arg(QLocale(QLocale::English).toString(d.unidades, 'f', 0), formatoMonto(d.monto, dolar),
                           formatoMonto(d.cobrado, dolar), formatoMonto(d.cobradoYPorCobrar, dolar)));
}

void Form_Admin_Win::refrescarCarrera() {
    const Recordset rs = tarjeta_.listaCarrera(seleccion());
    cargando_ = true;
    carreraTabla_->setRowCount(rs.size());
    for (int i = 0; i < rs.size(); ++i) {
        const Row& r = rs[i];
        carreraTabla_->setItem(i, 0, celda(r.text("id_carrera")));
        carreraTabla_->setItem(i, 1, celda(r.text("nu_caballo")));
        carreraTabla_->setItem(i, 2, celda(r.text("caballo")));
        carreraTabla_->setItem(i, 3, celda(r.integer("favorito") == 1 ? "F" : ""));
        auto* ret = celda(r.integer("retirado") != 0 ? QStringLiteral("RET") : QString());
        ret->setFlags(ret->flags() | Qt::ItemIsUserCheckable);
        ret->setCheckState(r.integer("retirado") != 0 ? Qt::Checked : Qt::Unchecked);
        carreraTabla_->setItem(i, 4, ret);
        carreraTabla_->setItem(i, 5, celda(r.text("estado"), true));
        carreraTabla_->setItem(i, 6, celda(r.text("apuesta_max_win"), true));
        carreraTabla_->setItem(i, 7, celda(r.text("puesto")));
        carreraTabla_->setItem(i, 8, celda(r.text("llegada")));
        if (r.integer("win_ganadores") != 0 && i == 0) {
            ganador_->setPlaceholderText(r.text("win_ganadores"));
            dividendo_->setPlaceholderText(r.text("dividendo"));
        }
    }
    if (rs.empty()) {
        ganador_->setPlaceholderText({});
        dividendo_->setPlaceholderText({});
    }
    if (const auto s = tarjeta_.switchesCarrera(seleccion())) {
        swGanadores_->setChecked(s->ganadores);
        swRemate_->setChecked(s->remate);
        swMacuare_->setChecked(s->macuare);
        swTablaFija_->setChecked(s->tablaFija);
        swPuestos_->setChecked(s->puestos);
    }
    cargando_ = false;
}

void Form_Admin_Win::celdaCarrera(int fila, int columna) {
    if (cargando_) return;
    const QTableWidgetItem* id = carreraTabla_->item(fila, 0);
    const QTableWidgetItem* i = carreraTabla_->item(fila, columna);
    if (!id || !i) return;
    const Seleccion s = seleccion();
    const long long idCarrera = id->text().toLongLong();
    if (columna == 4) tarjeta_.cambiarRetirado(s, idCarrera, i->checkState() == Qt::Checked);
    else if (columna == 5) {
        bool ok = false;
        const int e = i->text().toInt(&ok);
        tarjeta_.cambiarEstado(s, idCarrera, ok ? e : -1);
    } else if (columna == 6) tarjeta_.cambiarApuestaMax(s, idCarrera, i->text());
    else return;
    QTimer::singleShot(0, this, &Form_Admin_Win::refrescarCarrera);
}

void Form_Admin_Win::refrescarCupos() {
    cargando_ = true;
    const Seleccion sel = seleccion();
    const auto r = cupos_.leer(sel);
    for (int i = 0; i < cuposCajas_.size(); ++i) {
        cuposCajas_[i]->setEnabled(r.has_value());
        cuposCajas_[i]->setText(r ? r->text(QStringLiteral("cab%1").arg(i + 1)) : QString());
        cuposCajas_[i]->setModified(false);
    }
    avisoCupos_->setText(r ? QString()
                         : !sel.centroElegido()
                             ? QStringLiteral("Los cupos son de un centro hípico: elija uno (no \"TODOS\") para verlos y cambiarlos.")
                             : QStringLiteral("El centro hípico %1 no tiene cupos registrados.").arg(sel.centro));
    cargando_ = false;
}

void Form_Admin_Win::refrescarRegla() {
    const Seleccion sel = seleccion();
    // Told by a box only when the rule tab is in front (the user is looking at it).
    const bool avisar = gerencia() && pestanas_ && pestanas_->currentWidget() == dividendos_;
    const QMap<QString, QString> v = reglaCentro_.leer(sel, avisar);
    // Without a rule to show, the boxes are empty rather than zeros, and say why.
    const QString vacio = v.isEmpty() ? QString() : QStringLiteral("0");
    for (auto it = regla_.cbegin(); it != regla_.cend(); ++it) {
        ponerValor(it.value(), v.value(it.key(), vacio));
        it.value()->setEnabled(!v.isEmpty());
    }
    avisoRegla_->setText(!v.isEmpty() ? QString()
                         : !sel.centroElegido()
                             ? QStringLiteral("La regla de dividendos es de un centro hípico: elija uno (no \"TODOS\") para verla y cambiarla.")
                         : gerencia() ? QString()
                                      : QStringLiteral("No hay regla de dividendos para el centro hípico %1 en este hipódromo.").arg(sel.centro));
    for (int n = 4; n <= 7; ++n)
        for (int c = 0; c < 16; ++c) {
            const QString col = QString::number(n) + kCorredoresCampos[c];
            auto* item = new QTableWidgetItem(v.value(col, n == 4 && c >= 8 ? QString() : vacio));
            if (n == 4 && c >= 8) item->setFlags(Qt::NoItemFlags);  // four runners have no extended bands
            corredores_->setItem(n - 4, c, item);
        }
    corredores_->setEnabled(!v.isEmpty());
}

void Form_Admin_Win::refrescarDescargas() {
    const DescargasGrupo::Descargas d = descargasGrupo_.descargas(seleccion());
    descargasModelo_->setRecordset(d.filas, {col(" Caballo ", "caballo"),
                                             col(" Ganadores ", "ganadores"),
                                             col("  Cobrado ", "cobrado"),
                                             col("  Grupo ", "grupo"),
                                             col("   Hora ", "hora")});
    const bool dolar = ctx_.session.enDolares();
    descargasTotal_->setText(QStringLiteral("Ganadores: %1    Cobrado: %2")
                                 .arg(textoNumero(d.sumaganadores), formatoMonto(d.sumacobrado, dolar)));
    condModelo_->setRecordset(descargasGrupo_.condicionados(seleccion()), {col(" Ch ", "ch"),
                                                       col(" Carrera ", "carrera"),
                                                       col(" Caballo ", "caballo"),
                                                       col(" Condicionado ", "montocond")});
}

void Form_Admin_Win::refrescarTaquillasVentas() {
    taqLista_->clear();
    taqLista_->addItems(gerencia_.lineasTaquillas(
        gerencia_.ventasPorTaquilla(seleccion(), taqHasta_->value(), taqTodas_->isChecked())));
}

void Form_Admin_Win::refrescarMensaje() {
    mensaje_->setText(gerencia_.mensaje());
}

void Form_Admin_Win::refrescarTaquillas() {
    taquillasModelo_->setRecordset(opciones_.taquillasDelGrupo(seleccion()),
                                   {col(" USUARIO ", "usuario"), col(" NOMBRE ", "nombre"), col(" PLANTILLA ", "plantilla")});
}

void Form_Admin_Win::mostrarProceso(const ResultadoProceso& r) {
    proceso_->setRowCount(r.grupos.size());
    for (int i = 0; i < r.grupos.size(); ++i) {
        const LiquidacionGrupo& g = r.grupos[i];
        QString x;
        switch (g.tipo) {
        case DividendoGrupo::Tipo::Pagar: x = textoNumero(g.dividendo); break;
        case DividendoGrupo::Tipo::Devolver: x = QStringLiteral("DEVUELTA"); break;
        case DividendoGrupo::Tipo::SinBanda: x = QStringLiteral("SIN BANDA"); break;
        }
        proceso_->setItem(i, 0, celda(g.grupo));
        proceso_->setItem(i, 1, celda(g.ch));
        proceso_->setItem(i, 2, celda(QString::number(g.caballo)));
        proceso_->setItem(i, 3, celda(x));
        proceso_->setItem(i, 4, celda(QString::number(g.boletos)));
    }
}

void Form_Admin_Win::buscar() {
    const auto b = gerencia()
                       ? boletosEscritorio_.buscar(seleccion(), clase_->currentText(), buscaCaballo_->text(),
                                                   historico_->isChecked(), BoletosEscritorio::consultaGerencia(),
                                                   hasta_->value())
                       : boletosEscritorio_.buscar(seleccion(), clase_->currentText(), buscaCaballo_->text(),
                                                   historico_->isChecked());
    if (!b) {
        boletosModelo_->setRecordset(Recordset());
        boletosTotal_->clear();
        return;
    }
    const auto estatus = col(" ESTATUS ", "estatus", &BoletosEscritorio::nombreEstatus);
    const bool dolar = ctx_.session.enDolares();
    if (gerencia()) {
        boletosModelo_->setRecordset(
            b->filas, {col(" BOLETO ", "nu_boleto"), col(" CAR ", "carrera"), col(" CAB ", "caballo"),
                       col(" GAND ", "ganadores"),
                       col(" DOLARS ", "dolares", [dolar](const Row& r) { return formatoMonto(r.number("dolares"), dolar); }),
                       col(" COBRADO ", "cobrado"), estatus, col(" TAQ ", "grupo"), col(" CH ", "ch")});
        boletosTotal_->setText(QStringLiteral("Boletos: %1    Ganadores: %2    Monto: %3    Pagado: %4    Por pagar: %5")
                                   .arg(b->filas.size())
                                   .arg(textoNumero(b->sumaganadores), formatoMonto(b->sumadolares, dolar),
                                        formatoMonto(b->sumacobrado, dolar), formatoMonto(b->sumaporcobrar, dolar)));
        return;
    }
    boletosModelo_->setRecordset(
        b->filas, {col(" BOLETO ", "nu_boleto"),
                   col(" HORA ", "hora"),
                   col(" CAR ", "carrera"),
                   col(" CAB ", "caballo"),
                   col(" GANAD ", "ganadores"),
                   col(" COBRADO ", "cobrado"),
                   estatus,
                   col(" TAQ ", "grupo"),
                   col(" CH ", "ch")});
    boletosTotal_->setText(QStringLiteral("Boletos: %1    Ganadores: %2    Cobrado: %3    Por cobrar: %4")
                               .arg(b->filas.size())
                               .arg(textoNumero(b->sumaganadores), formatoMonto(b->sumacobrado, dolar),
                                    formatoMonto(b->sumaporcobrar, dolar)));
}

long long Form_Admin_Win::numeroBoleto() { return numero_->text().trimmed().toLongLong(); }

}  // namespace hipico
