#include "sales/Form_IngresoJugadas.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Network.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QThread>
#include <QVBoxLayout>

namespace hipico {

namespace {

// The lookup's own warning gives way to this window's.
class SinAvisos : public Dialogs {
public:
    void message(Icon, const QString&, const QString&) override {}
    bool confirm(const QString&, const QString&, bool, Icon) override { return false; }
    std::optional<QString> ask(const QString&, const QString&, const QString&) override { return std::nullopt; }
};

void llenar(QComboBox* lista, const IngresoJugadas::Opciones& opciones) {
    for (const auto& [id, nombre] : opciones) lista->addItem(nombre, id);
}

QGroupBox* grupo(const QString& titulo, const char* nombre) {
    auto* g = new QGroupBox(titulo);
    g->setObjectName(QString::fromLatin1(nombre));
    return g;
}

}  // namespace

Form_IngresoJugadas::Form_IngresoJugadas(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_IngresoJugadas"), QStringLiteral("INGRESO DE JUGADAS DE CLIENTES")),
      logica_(ctx) {
    // The client.
    busqueda_ = caja(QStringLiteral("Text_Bus2"), nullptr, 100);
    busqueda_->setPlaceholderText(QStringLiteral("nombre o usuario del cliente"));
    auto* buscar = boton(QStringLiteral("Buscar"), "Boton_Buscar");
    clientes_ = new RecordsetModel(this);
    grillaClientes_ = grillaDe(clientes_, QStringLiteral("Grilla_Clientes"));
    cliente_ = new QLabel(QStringLiteral("SIN CLIENTE"));
    cliente_->setObjectName(QStringLiteral("Label_Cliente"));
    saldo_ = new QLabel;
    saldo_->setObjectName(QStringLiteral("Label_Saldo"));
    observacionCliente_ = caja(QStringLiteral("Text_ObservacionCliente"), nullptr, 255);
    usuarioCliente_ = caja(QStringLiteral("Text_UsuarioCliente"), nullptr, 45);
    vip_ = new QCheckBox(QStringLiteral("VIP"));
    vip_->setObjectName(QStringLiteral("Check_Vip"));
    auto* nuevo = boton(QStringLiteral("Nuevo Cliente"), "Command4");

    auto* cajaCliente = grupo(QStringLiteral("CLIENTE"), "Frame_Cliente");
    auto* lc = new QVBoxLayout(cajaCliente);
    auto* filaBuscar = new QHBoxLayout;
    filaBuscar->addWidget(busqueda_, 1);
    filaBuscar->addWidget(buscar);
    lc->addLayout(filaBuscar);
    lc->addWidget(grillaClientes_, 1);
    lc->addWidget(cliente_);
    lc->addWidget(saldo_);
    auto* formaNuevo = new QFormLayout;
    formaNuevo->addRow(QStringLiteral("Observación"), observacionCliente_);
    auto* filaUsuario = new QHBoxLayout;
    filaUsuario->addWidget(usuarioCliente_, 1);
    filaUsuario->addWidget(vip_);
    formaNuevo->addRow(QStringLiteral("Usuario"), filaUsuario);
    lc->addLayout(formaNuevo);
    lc->addWidget(nuevo, 0, Qt::AlignRight);

    // The movement.
    jugada_ = new QRadioButton(QStringLiteral("Jugada"));
    jugada_->setObjectName(QStringLiteral("Option_Jugada"));
    jugada_->setChecked(true);
    positiva_ = new QRadioButton(QStringLiteral("Premio o dinero"));
    positiva_->setObjectName(QStringLiteral("Option_Positivo"));
    juego_ = new QComboBox;
    juego_->setObjectName(QStringLiteral("Bton_SelJuego"));
    juego_->addItems(IngresoJugadas::juegos());
    monto_ = caja(QStringLiteral("Text_Monto"), nullptr, 15, SoloNumerosComa);
    tipo_ = new QComboBox;
    tipo_->setObjectName(QStringLiteral("Combo_Tipo"));
    llenar(tipo_, logica_.tiposOperacion());
    banco_ = new QComboBox;
    banco_->setObjectName(QStringLiteral("Combo_Banco"));
    llenar(banco_, logica_.bancos());
    operacion_ = caja(QStringLiteral("Text_Operacion"), nullptr, 45);
    observacion_ = caja(QStringLiteral("Text_Observacion"), nullptr, 255);
    auto* procesar = boton(QStringLiteral("Procesar"), "Bton_Procesar");

    auto* cajaJugada = grupo(QStringLiteral("JUGADA"), "Frame_Jugada");
    auto* fj = new QFormLayout(cajaJugada);
    auto* clase = new QHBoxLayout;
    clase->addWidget(jugada_);
    clase->addWidget(positiva_);
    clase->addStretch(1);
    fj->addRow(QStringLiteral("Operación"), clase);
    fj->addRow(QStringLiteral("Juego"), juego_);
    fj->addRow(QStringLiteral("Monto"), monto_);
    fj->addRow(QStringLiteral("Tipo"), tipo_);
    fj->addRow(QStringLiteral("Banco"), banco_);
    fj->addRow(QStringLiteral("Nº de operación"), operacion_);
    fj->addRow(QStringLiteral("Observación"), observacion_);
    fj->addRow(QString(), procesar);

    // The statement.
    const QDate hoy = desdeFechaSql(ctx.session.fecha).isValid() ? desdeFechaSql(ctx.session.fecha) : ctx.clock.today();
    desde_ = selectorFecha(QStringLiteral("DTPicker_Desde"));
    desde_->setDate(hoy.addDays(-7));
    hasta_ = selectorFecha(QStringLiteral("DTPicker_Hasta"));
    hasta_->setDate(hoy);
    auto* ver = boton(QStringLiteral("Estado de Cuenta"), "Command2");
    auto* imprimir = boton(QStringLiteral("Imprimir"), "Command_Imprimir");
    estado_ = new RecordsetModel(this);
    auto* grillaEstado = grillaDe(estado_, QStringLiteral("Grilla_Estado"));
    auto* cajaEstado = grupo(QStringLiteral("ESTADO DE CUENTA"), "Frame_Estado");
    auto* le = new QVBoxLayout(cajaEstado);
    auto* fechas = new QHBoxLayout;
    fechas->addWidget(new QLabel(QStringLiteral("Desde")));
    fechas->addWidget(desde_);
    fechas->addWidget(new QLabel(QStringLiteral("Hasta")));
    fechas->addWidget(hasta_);
    fechas->addWidget(ver);
    fechas->addWidget(imprimir);
    fechas->addStretch(1);
    le->addLayout(fechas);
    le->addWidget(grillaEstado, 1);

    ip_ = new QLabel;
    ip_->setObjectName(QStringLiteral("Label_Ip"));
    auto* salir = boton(QStringLiteral("Salir"), "Boton_Salir");
    auto* pie = new QHBoxLayout;
    pie->addWidget(ip_);
    pie->addStretch(1);
    pie->addWidget(salir);

    auto* derecha = new QVBoxLayout;
    derecha->addWidget(cajaJugada);
    derecha->addWidget(cajaEstado, 1);
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(cajaCliente, 2);
    cuerpo->addLayout(derecha, 3);
    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(cuerpo, 1);
    raiz->addLayout(pie);

    enterEjecuta(busqueda_, [this] { Text_Bus2_Enter(); });
    enterEjecuta(grillaClientes_, [this] { Grilla_Elegir(); });
    for (QWidget* w : std::initializer_list<QWidget*>{jugada_, positiva_, juego_, monto_, tipo_, banco_, operacion_,
                                                     observacionCliente_, usuarioCliente_, vip_, desde_})
        EnterMovesOn::install(w);
    enterVaA(hasta_, ver);
    enterEjecuta(observacion_, [this] { Bton_Procesar_Click(); });
    for (QPushButton* b : {buscar, nuevo, procesar, ver, salir}) enterPulsa(b);
    connect(buscar, &QPushButton::clicked, this, &Form_IngresoJugadas::Text_Bus2_Enter);
    connect(grillaClientes_, &QTableView::clicked, this, &Form_IngresoJugadas::Grilla_Elegir);
    connect(nuevo, &QPushButton::clicked, this, &Form_IngresoJugadas::Command4_Click);
    connect(procesar, &QPushButton::clicked, this, &Form_IngresoJugadas::Bton_Procesar_Click);
    connect(ver, &QPushButton::clicked, this, &Form_IngresoJugadas::Command2_Click);
    connect(imprimir, &QPushButton::clicked, this, &Form_IngresoJugadas::imprimirEstado);
    connect(salir, &QPushButton::clicked, this, &QWidget::close);
    connect(positiva_, &QRadioButton::toggled, juego_, &QWidget::setDisabled);
    connect(positiva_, &QRadioButton::toggled, this, &Form_IngresoJugadas::tipoPorOmision);

    // The clients the user may see, from the start.
    if (const auto filas = logica_.buscarClientes(QString(), false)) mostrarClientes(*filas);
    tipoPorOmision();
    mostrarCliente();
    primerFoco(busqueda_);
    resize(980, 600);
}

Form_IngresoJugadas::~Form_IngresoJugadas() {
    if (busquedaIp_) busquedaIp_->wait();
}

void Form_IngresoJugadas::showEvent(QShowEvent* event) {
    Ventana::showEvent(event);
    if (!resultadoIp_) buscarIp();
}

// Asked of the configured services in the background; with none configured
// nobody is asked and nothing is said.
void Form_IngresoJugadas::buscarIp() {
    resultadoIp_ = std::make_shared<QString>();
    const QString servicios = ctx_.config.serviciosIp.trimmed();
    if (servicios.isEmpty()) return;
    ip_->setText(QStringLiteral("IP pública: buscando..."));
    auto resultado = resultadoIp_;
    const int espera = ctx_.config.esperaRedMs;
    busquedaIp_ = QThread::create([resultado, servicios, espera] {
        SinAvisos callado;
        *resultado = IpPublica(servicios, callado, espera);
    });
    connect(busquedaIp_, &QThread::finished, this, &Form_IngresoJugadas::ipEncontrada);
    busquedaIp_->start();
}

void Form_IngresoJugadas::esperarIp() {
    if (!busquedaIp_) return;
    busquedaIp_->wait();
    ipEncontrada();
}

void Form_IngresoJugadas::ipEncontrada() {
    if (!busquedaIp_) return;
    busquedaIp_->deleteLater();
    busquedaIp_ = nullptr;
    ip_->setText(QStringLiteral("IP pública: ") + *resultadoIp_);
    if (resultadoIp_->isEmpty()) ctx_.dialogs.refuse(kTituloSinInternet, kSinInternetCliente);
}

void Form_IngresoJugadas::mostrarCliente() {
    const auto& c = logica_.cliente();
    cliente_->setText(c ? QStringLiteral("%1  -  %2%3").arg(c->id).arg(c->nombre, c->tipo == 2 ? "  (VIP)" : "")
                        : QStringLiteral("SIN CLIENTE"));
    saldo_->setText(c ? QStringLiteral("SALDO: ") + formatoMoneda(c->saldo) : QString());
}

void Form_IngresoJugadas::mostrarClientes(const Recordset& filas) {
    clientes_->setRecordset(filas, {{QStringLiteral(" CODIGO "), QStringLiteral("id_cliente")},
                                    {QStringLiteral(" CLIENTE"), QStringLiteral("cliente")},
                                    {QStringLiteral(" OBSERVACION "), QStringLiteral("observacion")}});
    grillaClientes_->resizeColumnsToContents();
    grillaClientes_->setCurrentIndex(clientes_->index(0, 0));
}

// A play is usually a JUGADA paid from the balance; money brought in a DEPOSITO.
void Form_IngresoJugadas::tipoPorOmision() {
    const int i = tipo_->findText(positiva_->isChecked() ? QStringLiteral("DEPOSITO") : QStringLiteral("JUGADA"));
    if (i >= 0) tipo_->setCurrentIndex(i);
}

void Form_IngresoJugadas::Text_Bus2_Enter() {
    const auto filas = logica_.buscarClientes(busqueda_->text());
    if (!filas) return;
    mostrarClientes(*filas);
    grillaClientes_->setFocus(Qt::OtherFocusReason);
    if (filas->size() == 1) Grilla_Elegir();
}

void Form_IngresoJugadas::Grilla_Elegir() {
    const int fila = grillaClientes_->currentIndex().row();
    if (fila < 0 || fila >= clientes_->recordset().size()) return;
    if (logica_.elegirCliente(clientes_->recordset()[fila].integer("id_cliente"))) {
        mostrarCliente();
        mostrarEstado(false);
        monto_->setFocus(Qt::OtherFocusReason);
    }
}

void Form_IngresoJugadas::Command4_Click() {
    IngresoJugadas::DatosCliente d;
    d.observacion = observacionCliente_->text();
    d.usuario = usuarioCliente_->text();
    d.tipo = vip_->isChecked() ? 2 : 1;
    if (!logica_.nuevoCliente(d)) return;
    observacionCliente_->clear();
    usuarioCliente_->clear();
    vip_->setChecked(false);
    mostrarCliente();
    monto_->setFocus(Qt::OtherFocusReason);
}

void Form_IngresoJugadas::Bton_Procesar_Click() {
    IngresoJugadas::Jugada j;
    j.positiva = positiva_->isChecked();
    j.juego = juego_->currentText();
    j.monto = monto_->text();
    j.tipo = tipo_->currentData().toInt();
    j.banco = banco_->currentData().toInt();
    j.nuOperacion = operacion_->text();
    j.observacion = observacion_->text();
    const bool hecho = logica_.procesar(j);
    mostrarCliente();
    if (!hecho) return;
    mostrarEstado(false);
    monto_->clear();
    operacion_->clear();
    observacion_->clear();
    monto_->setFocus(Qt::OtherFocusReason);
}

void Form_IngresoJugadas::Command2_Click() { mostrarEstado(true); }

// The statement on the report window, as just listed.
void Form_IngresoJugadas::imprimirEstado() {
    if (mostrarEstado(true)) abrirReporte(ctx_, kReporteJugadasCliente, {}, this);
}

bool Form_IngresoJugadas::mostrarEstado(bool avisar) {
    const auto filas = logica_.estadoDeCuenta(desde_->date(), hasta_->date(), avisar);
    const auto derecha = Qt::AlignRight | Qt::AlignVCenter;
    const auto izquierda = Qt::AlignLeft | Qt::AlignVCenter;
    estado_->setRecordset(filas.value_or(Recordset()),
                          {{QStringLiteral(" FECHA "), QStringLiteral("FECHA"),
                            [](const Row& r) { return fechaVista(r.text("FECHA")); }, izquierda},
                           {QStringLiteral(" HORA "), QStringLiteral("HORA"), {}, izquierda},
                           {QStringLiteral(" OPERACION "), QStringLiteral("OPERACION"), {}, izquierda},
                           {QStringLiteral(" TIPO "), QStringLiteral("TIPO"), {}, izquierda},
                           {QStringLiteral(" MONTO "), QStringLiteral("MONTO"),
                            [](const Row& r) { return formatoMoneda(r.number("MONTO")); }, derecha},
                           {QStringLiteral(" BANCO "), QStringLiteral("BANCO"), {}, izquierda},
                           {QStringLiteral(" NUMERO "), QStringLiteral("NUMERO"), {}, izquierda},
                           {QStringLiteral(" USUARIO "), QStringLiteral("USUARIO"), {}, izquierda},
                           {QStringLiteral(" OBSERVACION "), QStringLiteral("observacion"), {}, izquierda}});
    return filas.has_value();
}

}  // namespace hipico
