#include "signin/frmLogin.h"

#include "core/Context.h"
#include "core/Network.h"
#include "core/Session.h"
#include "core/Version.h"
#include "gui/Estilo.h"
#include "gui/Teclado.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

constexpr int kIntervaloRedMs = 2000;

}  // namespace

frmLogin::frmLogin(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("frmLogin"), kTituloInicioSesion),
      terminar([] { QCoreApplication::exit(0); }),
      login_(ctx) {
    auto* encabezado = new QLabel(QStringLiteral("CENTROS HÍPICOS"), this);
    encabezado->setObjectName("encabezado");
    encabezado->setAlignment(Qt::AlignCenter);
    auto* subtitulo = new QLabel(QStringLiteral("Ingrese su usuario y su clave"), this);
    subtitulo->setAlignment(Qt::AlignCenter);

    txtUserName_ = new QLineEdit(this);
    txtUserName_->setObjectName("txtUserName");
    txtUserName_->setMaxLength(45);
    txtPassword_ = new QLineEdit(this);
    txtPassword_->setObjectName("txtPassword");
    txtPassword_->setEchoMode(QLineEdit::Password);
    txtPassword_->setMaxLength(45);

    cmdOK_ = new QPushButton(QStringLiteral("&Aceptar"), this);
    cmdOK_->setObjectName("cmdOK");
    cmdCancel_ = new QPushButton(QStringLiteral("&Cancelar"), this);
    cmdCancel_->setObjectName("cmdCancel");

    lblVersion_ = new QLabel(kVersionEtiqueta, this);
    lblVersion_->setObjectName("lblVersion");
    Label_internet_ = new QLabel(this);
    Label_internet_->setObjectName("Label_internet");
    Label_internet_->setAlignment(Qt::AlignCenter);
    Label_internet_->setMinimumWidth(120);
    Text_datos_ = new QLineEdit(this);
    Text_datos_->setObjectName("Text_datos");
    Text_datos_->setReadOnly(true);
    Text_datos_->setFocusPolicy(Qt::NoFocus);

    auto* formulario = new QFormLayout;
    formulario->addRow(QStringLiteral("&Usuario:"), txtUserName_);
    formulario->addRow(QStringLiteral("C&lave:"), txtPassword_);
    formulario->addRow(QStringLiteral("IP pública:"), Text_datos_);
    formulario->setContentsMargins(24, 8, 24, 8);

    auto* botones = new QHBoxLayout;
    botones->addStretch();
    botones->addWidget(cmdOK_);
    botones->addWidget(cmdCancel_);
    botones->addStretch();

    auto* pie = new QHBoxLayout;
    pie->addWidget(lblVersion_);
    pie->addStretch();
    pie->addWidget(Label_internet_);
    pie->setContentsMargins(8, 4, 8, 8);

    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->addWidget(encabezado);
    columna->addWidget(subtitulo);
    columna->addLayout(formulario);
    columna->addLayout(botones);
    columna->addLayout(pie);
    setFixedSize(420, 300);

    ordenTabulacion({txtUserName_, txtPassword_, cmdOK_, cmdCancel_});
    EnterMovesOn::install(txtUserName_);
    enterEjecuta(txtPassword_, [this] { cmdOK_Click(); });
    connect(cmdOK_, &QPushButton::clicked, this, &frmLogin::cmdOK_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmLogin::cmdCancel_Click);

    Timer1_ = new QTimer(this);
    Timer1_->setInterval(kIntervaloRedMs);
    connect(Timer1_, &QTimer::timeout, this, &frmLogin::Timer1_Timer);
    Timer1_->start();
    Timer1_Timer();
    primerFoco(txtUserName_);
}

frmLogin::~frmLogin() {
    if (busqueda_) {
        busqueda_->wait();
        delete busqueda_;
    }
}

// "Online" when the network is up and the address services answered (with
// no services configured, the network alone); "No hay Internet" otherwise.
void frmLogin::Timer1_Timer() {
    const bool red = HayInternet();
    QString texto = Login::textoRed(red && red_ != Red::SinRespuesta);
    if (red && red_ == Red::Preguntando) texto = QStringLiteral("Verificando...");
    Label_internet_->setText(texto);
    marcar(Label_internet_, "enLinea", red && (red_ == Red::Respondio || red_ == Red::SinServicios));
}

void frmLogin::showEvent(QShowEvent* event) {
    Ventana::showEvent(event);
    if (!ipBuscada_ && !busqueda_) buscarIpPublica();
}

// The public address is asked of the configured services in the background:
// the window can be used, and the sign-in done, meanwhile. With no services
// configured nobody is asked and the address stays empty, without a warning.
void frmLogin::buscarIpPublica() {
    const QString servicios = ctx_.config.serviciosIp.trimmed();
    if (servicios.isEmpty()) {
        ipBuscada_ = true;
        red_ = Red::SinServicios;
        Text_datos_->setPlaceholderText(QStringLiteral("sin servicios configurados"));
        Timer1_Timer();
        return;
    }
    Text_datos_->setPlaceholderText(QStringLiteral("buscando..."));
    red_ = Red::Preguntando;
    Timer1_Timer();
    auto resultado = std::make_shared<QString>();
    resultadoIp_ = resultado;
    const int espera = ctx_.config.esperaRedMs;
    busqueda_ = QThread::create([resultado, servicios, espera] { *resultado = preguntarIpPublica(servicios, espera); });
    connect(busqueda_, &QThread::finished, this, &frmLogin::mostrarIp);
    busqueda_->start();
}

bool frmLogin::buscandoIp() const { return busqueda_ && !ipBuscada_; }

// The answer, when it comes: shown here (and in the menu's status bar after
// the sign-in), recorded with the login, and a failure told once without
// stopping anybody.
void frmLogin::mostrarIp() {
    if (!busqueda_ || ipBuscada_) return;
    busqueda_->wait();
    ipBuscada_ = true;
    busqueda_->deleteLater();
    busqueda_ = nullptr;
    const QString ip = *resultadoIp_;
    red_ = EsIpValida(ip) ? Red::Respondio : Red::SinRespuesta;
    login_.ipPublica = ip;
    Text_datos_->setText(ip);
    Text_datos_->setCursorPosition(0);
    Timer1_Timer();
    if (aceptado_) {
        ctx_.session.ipPublica = ip;
        proteger([&] { login_.registrarIp(ip); });
        ctx_.ponerTituloMenu(tituloMenuPrincipal(ctx_.session));
    }
    if (ip.isEmpty()) ctx_.dialogs.notify(Icon::Critical, kTituloSinInternet, kSinInternet);
}

void frmLogin::cmdOK_Click() {
    if (aceptado_ || terminado_) return;
    // The sign-in does not wait for the address services: an address found
    // later is recorded then.
    const Login::Resultado r = login_.IniciarSesion(txtUserName_->text(), txtPassword_->text());
    if (r == Login::Resultado::Aceptado) {
        aceptado_ = true;
        Timer1_->stop();
        if (alAceptar) alAceptar();
        close();
        return;
    }
    if (Login::terminaPrograma(r)) {
        terminado_ = true;
        hide();
        if (terminar) terminar();
        return;
    }
    if (Login::vuelveAClave(r)) {
        txtPassword_->setFocus();
        txtPassword_->selectAll();
    }
}

void frmLogin::cmdCancel_Click() { close(); }

void frmLogin::closeEvent(QCloseEvent* event) {
    event->accept();
    if (aceptado_ || terminado_) return;
    terminado_ = true;
    if (terminar) terminar();
}

}  // namespace hipico
