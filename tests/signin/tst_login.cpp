// Sign-in: every rule over the demo users, what it writes and what it leaves
// alone, and the real window driven from the keyboard.
#include "app/Ventanas.h"
#include "core/Cipher.h"
#include "core/Claves.h"
#include "core/Connections.h"
#include "core/Network.h"
#include "core/Version.h"
#include "core/WindowRegistry.h"
#include "schema/Demo.h"
#include "signin/Form_MenuPrincipal.h"
#include "signin/Login.h"
#include "signin/MenuEntradas.h"
#include "signin/frmLogin.h"
#include "support/TestEnv.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

namespace {

const QString kEstaPc = "AA:BB:CC:00:00:01";
const QString kOtraPc = "AA:BB:CC:00:00:99";
const QString kIp = "200.44.32.12";

// Answers every request with one body (a public-address service).
class ServicioIp : public QObject {
public:
    explicit ServicioIp(QByteArray cuerpo) : cuerpo_(std::move(cuerpo)) {
        servidor_.listen(QHostAddress::LocalHost, 0);
        connect(&servidor_, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = servidor_.nextPendingConnection()) {
                connect(s, &QTcpSocket::readyRead, s, [this, s] {
                    s->readAll();
                    ++pedidos;
                    s->write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                             QByteArray::number(cuerpo_.size()) + "\r\n\r\n" + cuerpo_);
                    s->disconnectFromHost();
                });
            }
        });
    }
    QString url() const { return QString("http://127.0.0.1:%1/ip").arg(servidor_.serverPort()); }
    int pedidos = 0;

private:
    QTcpServer servidor_;
    QByteArray cuerpo_;
};

QString puertoCerrado() {
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    return QString("http://127.0.0.1:%1/ip").arg(s.serverPort());
}

}  // namespace

class TstLogin : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    // Every user row as text, keyed by user name.
    QMap<QString, QString> usuarios() {
        QMap<QString, QString> filas;
        for (const Row& r : env->db().query("select * from usuarios order by id_usuario")) {
            QStringList valores;
            for (const QVariant& v : r.values()) valores << Row::toText(v);
            filas.insert(r.text("usuario"), valores.join('|'));
        }
        return filas;
    }

    void limpiar() {
        env->db().exec("update usuarios set fecha_ingreso='', hora_ingreso='', mac='', ip_pc='', version='', "
                       "estatus='Activo'");
        env->db().exec("update grupos set bloqueo=1, subastas=2");
        env->db().exec("delete from intentos_sesion");
        env->ctx.cnLocal.reset();
        env->ctx.cnServidor.reset();
        env->ctx.session = Session();
        env->dialogs.clear();
        env->ctx.config.serviciosIp.clear();
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("login", true);
        env->loadDemo();
    }

    void init() {
        env->ctx.cnServidor = env->connect();
        limpiar();
        env->ctx.cnServidor = env->connect();
    }

    void reglas_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QString>("preparar");  // run before, with the working date as its one value
        QTest::addColumn<int>("resultado");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<bool>("conLocal");

        using R = Login::Resultado;
        const QString nada;
        QTest::newRow("administrator") << "admin" << "admin123" << nada << int(R::Aceptado) << nada << nada << true;
        QTest::newRow("booth") << "taquilla1" << "taq123" << nada << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("booth 2") << "taquilla2" << "taq123" << nada << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("manager") << "gerente" << "gerente123" << nada << int(R::Aceptado) << nada << nada << true;
        QTest::newRow("partner") << "socio" << "socio123" << nada << int(R::Aceptado) << nada << nada << true;
        QTest::newRow("fixed-table booth") << "tablafija" << "tf123" << nada << int(R::Aceptado) << nada << nada
                                           << false;
        QTest::newRow("auctioneer, group with 2 tables: no local")
            << "remate" << "remate123" << nada << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("auctioneer, group with 3 tables")
            << "remate" << "remate123" << "update grupos set subastas=3 where grupo='08' and ? <> ''"
            << int(R::Aceptado) << nada << nada << true;
        QTest::newRow("unknown user") << "nadie" << "x" << nada << int(R::UsuarioInvalido) << kTituloInicioSesion
                                      << kUsuarioNoValido << false;
        QTest::newRow("empty user") << "" << "" << nada << int(R::UsuarioInvalido) << kTituloInicioSesion
                                    << kUsuarioNoValido << false;
        QTest::newRow("quote in the name") << "' or '1'='1" << "' or '1'='1" << nada << int(R::UsuarioInvalido)
                                           << kTituloInicioSesion << kUsuarioNoValido << false;
        QTest::newRow("wrong password") << "admin" << "admin124" << nada << int(R::ClaveInvalida)
                                        << kTituloInicioSesion << kClaveNoValida << false;
        QTest::newRow("name in another case") << "ADMIN" << "admin123" << nada << int(R::ClaveInvalida)
                                              << kTituloInicioSesion << kClaveNoValida << false;
        QTest::newRow("password in another case") << "admin" << "ADMIN123" << nada << int(R::ClaveInvalida)
                                                  << kTituloInicioSesion << kClaveNoValida << false;
        QTest::newRow("empty password") << "admin" << "" << nada << int(R::ClaveInvalida) << kTituloInicioSesion
                                        << kClaveNoValida << false;
        QTest::newRow("the cipher key is no password") << "admin" << kClaveMaestra << nada << int(R::ClaveInvalida)
                                                       << kTituloInicioSesion << kClaveNoValida << false;
        QTest::newRow("same computer, same day")
            << "taquilla1" << "taq123" << "update usuarios set mac='" + kEstaPc + "', fecha_ingreso=? where usuario='taquilla1'"
            << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("other computer, same day")
            << "taquilla1" << "taq123" << "update usuarios set mac='" + kOtraPc + "', fecha_ingreso=? where usuario='taquilla1'"
            << int(R::SesionEnOtraPc) << kTituloSesionAbierta << kSesionAbierta << false;
        QTest::newRow("other computer, same day, administrator")
            << "admin" << "admin123" << "update usuarios set mac='" + kOtraPc + "', fecha_ingreso=? where usuario='admin'"
            << int(R::SesionEnOtraPc) << kTituloSesionAbierta << kSesionAbierta << false;
        QTest::newRow("other computer, same day, hidden administrator")
            << "oculto" << "oculto123" << "update usuarios set mac='" + kOtraPc + "', fecha_ingreso=? where usuario='oculto'"
            << int(R::Aceptado) << nada << nada << true;
        QTest::newRow("other computer, same day, group without the lock")
            << "taquilla1" << "taq123"
            << "update usuarios u join grupos g on g.grupo=u.grupo set u.mac='" + kOtraPc +
                   "', u.fecha_ingreso=?, g.bloqueo=0 where u.usuario='taquilla1'"
            << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("other computer, another day")
            << "taquilla1" << "taq123" << "update usuarios set mac='" + kOtraPc + "', fecha_ingreso=date_format(date_sub(?, interval 1 day), '%Y-%m-%d') where usuario='taquilla1'"
            << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("no computer recorded")
            << "taquilla1" << "taq123" << "update usuarios set mac='', fecha_ingreso=? where usuario='taquilla1'"
            << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("suspended")
            << "gerente" << "gerente123" << "update usuarios set estatus='Baja' where usuario='gerente' and ? <> ''"
            << int(R::CuentaSuspendida) << kTituloCobranza << kCuentaSuspendida << false;
        QTest::newRow("in use elsewhere is told before suspended")
            << "taquilla1" << "taq123"
            << "update usuarios set estatus='Baja', mac='" + kOtraPc + "', fecha_ingreso=? where usuario='taquilla1'"
            << int(R::SesionEnOtraPc) << kTituloSesionAbierta << kSesionAbierta << false;
        // Passwords stored as one-way hashes sign in beside the enciphered ones.
        const QString hash = guardarClave("taq123", FormaClave::Argon2id);
        const QString conHash = "update usuarios set clave='" + hash + "' where usuario='taquilla1' and ? <> ''";
        QTest::newRow("password kept as a one-way hash")
            << "taquilla1" << "taq123" << conHash << int(R::Aceptado) << nada << nada << false;
        QTest::newRow("wrong password against a hash")
            << "taquilla1" << "taq124" << conHash << int(R::ClaveInvalida) << kTituloInicioSesion << kClaveNoValida
            << false;
        QTest::newRow("hash, name in another case")
            << "TAQUILLA1" << "taq123" << conHash << int(R::ClaveInvalida) << kTituloInicioSesion << kClaveNoValida
            << false;
        QTest::newRow("suspended, wrong password")
            << "gerente" << "x" << "update usuarios set estatus='Baja' where usuario='gerente' and ? <> ''"
            << int(R::ClaveInvalida) << kTituloInicioSesion << kClaveNoValida << false;
    }

    void reglas() {
        QFETCH(QString, usuario);
        QFETCH(QString, clave);
        QFETCH(QString, preparar);
        QFETCH(int, resultado);
        QFETCH(QString, titulo);
        QFETCH(QString, mensaje);
        QFETCH(bool, conLocal);

        Db& db = env->db();
        const QString fecha = textOf(db, "select fecha from configuracion");
        if (!preparar.isEmpty()) db.exec(preparar.toStdString(), {fecha});
        const auto antes = usuarios();

        Login login(env->ctx);
        login.mac = kEstaPc;
        login.ipPublica = kIp;
        const Login::Resultado r = login.IniciarSesion(usuario, clave);
        QCOMPARE(int(r), resultado);

        if (mensaje.isEmpty()) {
            QCOMPARE(env->dialogs.count(), 0);
        } else {
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().title, titulo);
            QCOMPARE(env->dialogs.last().text, mensaje);
            QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        }
        QCOMPARE(bool(env->ctx.cnLocal), conLocal);

        const auto despues = usuarios();
        for (auto it = antes.cbegin(); it != antes.cend(); ++it)
            if (r != Login::Resultado::Aceptado || it.key() != usuario)
                QCOMPARE(despues.value(it.key()), it.value());
        if (r == Login::Resultado::Aceptado) {
            Db& db = env->db();  // the sign-in opened a new connection
            const Row u = db.query("select * from usuarios where usuario=?", {usuario}).first();
            QCOMPARE(u.text("fecha_ingreso"), fecha);
            QCOMPARE(u.text("hora_ingreso"), QString("10:30:00"));
            QCOMPARE(u.text("mac"), kEstaPc);
            QCOMPARE(u.text("ip_pc"), kIp);
            QCOMPARE(u.text("version"), QString("4.0.04"));
            const Session& s = env->ctx.session;
            QCOMPARE(s.usuario, usuario);
            QCOMPARE(s.fecha, fecha);
            QCOMPARE(s.mac, kEstaPc);
            QCOMPARE(s.ipPublica, kIp);
            QCOMPARE(s.ch, textOf(db, "select ch from grupos where grupo=?", {s.grupo}));
            QVERIFY(s.idUsuario > 0);
            // Signing one user in does not load the whole users table.
            QVERIFY(!env->ctx.hasRecordset("rsUsuarios"));
        }
    }

    // After the configured number of failures in a row the account is held
    // for the configured minutes, whatever is typed; other accounts and
    // unknown names are not affected, and a good sign-in starts the count again.
    void retencion() {
        env->db().exec("update configuracion set intentos_clave=3, minutos_bloqueo=10");
        const QDateTime inicio = env->clock.now();
        Login login(env->ctx);
        login.mac = kEstaPc;
        using R = Login::Resultado;
        auto intento = [&](const char* usuario, const char* clave, R esperado, const QString& texto) {
            env->dialogs.clear();
            QCOMPARE(login.IniciarSesion(usuario, clave), esperado);
            if (!texto.isEmpty()) QCOMPARE(env->dialogs.last().text, texto);
        };
        intento("taquilla1", "x", R::ClaveInvalida, kClaveNoValida);
        intento("TAQUILLA1", "taq123", R::ClaveInvalida, kClaveNoValida);
        intento("nadie", "x", R::UsuarioInvalido, kUsuarioNoValido);
        intento("taquilla1", "y", R::CuentaRetenida, kCuentaRetenida.arg(10));
        QCOMPARE(env->dialogs.last().title, kTituloInicioSesion);
        intento("taquilla1", "taq123", R::CuentaRetenida, kCuentaEnEspera.arg(10));
        intento("taquilla2", "taq123", R::Aceptado, {});
        env->clock.advance(9 * 60 + 1);
        intento("taquilla1", "taq123", R::CuentaRetenida, kCuentaEnEspera.arg(1));
        env->clock.advance(59);
        intento("taquilla1", "taq123", R::Aceptado, {});
        intento("taquilla1", "x", R::ClaveInvalida, kClaveNoValida);
        intento("taquilla1", "x", R::ClaveInvalida, kClaveNoValida);
        intento("taquilla1", "taq123", R::Aceptado, {});
        // With no count set nobody is held.
        env->db().exec("update configuracion set intentos_clave=0");
        for (int i = 0; i < 5; ++i) intento("taquilla1", "x", R::ClaveInvalida, kClaveNoValida);
        intento("taquilla1", "taq123", R::Aceptado, {});
        env->db().exec("update configuracion set intentos_clave=5, minutos_bloqueo=15");
        env->clock.set(inicio);
        env->dialogs.clear();
    }

    void identidadYSubgrupo() {
        Login login(env->ctx);
        login.mac = kEstaPc;
        QCOMPARE(login.IniciarSesion("taquilla3", "taq123"), Login::Resultado::Aceptado);
        const Session& s = env->ctx.session;
        QCOMPARE(s.nivel, QString("Taquilla"));
        QCOMPARE(s.nombre, QString("TAQUILLA MARACAY"));
        QCOMPARE(s.grupo, QString("12"));
        QCOMPARE(s.ch, QString("MARACAY"));
        QCOMPARE(s.subgrupo, QString("S2"));
        QCOMPARE(s.subgrupoNombre, QString("OCCIDENTE"));
        QCOMPARE(s.bloqueo, 1);
        QCOMPARE(s.subastas, 2);

        // The administrator levels and the partner are bound to no subgroup.
        QCOMPARE(login.IniciarSesion("socio", "socio123"), Login::Resultado::Aceptado);
        QCOMPARE(env->ctx.session.subgrupoNombre, QString());
        QCOMPARE(env->ctx.session.subgrupo, QString("S1"));  // the group's own
    }

    void nombresConComillas() {
        Db& db = env->db();
        for (const QString nombre : {"o'brien", "'; drop table usuarios; --"})
            db.exec("INSERT INTO usuarios (usuario, clave, nombre, nivel, grupo, estatus) VALUES (?, ?, 'X', "
                    "'Taquilla', '07', 'Activo')",
                    {nombre, Encriptar("clave'1", kClaveMaestra)});
        Login login(env->ctx);
        login.mac = kEstaPc;
        QCOMPARE(login.IniciarSesion("o'brien", "clave'1"), Login::Resultado::Aceptado);
        QCOMPARE(login.IniciarSesion("'; drop table usuarios; --", "clave'1"), Login::Resultado::Aceptado);
        QCOMPARE(textOf(env->db(), "select mac from usuarios where usuario=?", {"o'brien"}), kEstaPc);
        env->db().exec("delete from usuarios where nombre='X'");
    }

    void servidorCaidoAvisaUnaVez() {
        Config& c = env->ctx.config;
        const int puerto = c.servidor.puerto;
        QTcpServer cerrado;
        cerrado.listen(QHostAddress::LocalHost, 0);
        c.servidor.puerto = cerrado.serverPort();
        cerrado.close();
        Login login(env->ctx);
        const Login::Resultado r = login.IniciarSesion("admin", "admin123");
        c.servidor.puerto = puerto;
        QCOMPARE(r, Login::Resultado::SinConexion);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().text, kMensajeConexion);
        QVERIFY(!env->ctx.cnServidor);
    }

    void sinBaseLocalSigueConAviso() {
        Config& c = env->ctx.config;
        const QString base = c.localBase;
        c.localBase = "t_login_no_existe";
        Login login(env->ctx);
        login.mac = kEstaPc;
        const Login::Resultado r = login.IniciarSesion("admin", "admin123");
        c.localBase = base;
        QCOMPARE(r, Login::Resultado::Aceptado);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, kTituloBDLocal);
        QCOMPARE(env->dialogs.last().icon, Icon::Warning);
        QVERIFY(!env->ctx.cnLocal);
        QCOMPARE(textOf(env->db(), "select mac from usuarios where usuario='admin'"), kEstaPc);
    }

    // The real window, from the keyboard.
    void ventanaDesdeElTeclado() {
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        int aceptado = 0, terminado = 0;
        w.alAceptar = [&] { ++aceptado; };
        w.terminar = [&] { ++terminado; };
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));

        QCOMPARE(w.findChild<QLabel*>("lblVersion")->text(), QString("...::: 4.0.04 :::..."));
        QCOMPARE(w.findChild<QLabel*>("Label_internet")->text(), Login::textoRed(HayInternet()));
        QCOMPARE(w.windowTitle(), QString("Inicio de sesión"));
        // No services configured: nobody is asked, nothing is shown.
        QVERIFY(!w.buscandoIp());
        QCOMPARE(w.findChild<QLineEdit*>("Text_datos")->text(), QString());
        QCOMPARE(env->dialogs.count(), 0);

        auto* usuario = w.findChild<QLineEdit*>("txtUserName");
        auto* clave = w.findChild<QLineEdit*>("txtPassword");
        QVERIFY(usuario->hasFocus());
        QTest::keyClicks(usuario, "taquilla1");
        QTest::keyClick(usuario, Qt::Key_Return);
        QVERIFY(clave->hasFocus());
        QTest::keyClicks(clave, "mala");
        grab(&w, "frmLogin");
        QTest::keyClick(clave, Qt::Key_Return);
        QCOMPARE(env->dialogs.texts(), QStringList{kClaveNoValida});
        QVERIFY(clave->hasFocus());
        QVERIFY(w.isVisible());
        QCOMPARE(aceptado, 0);

        clave->clear();
        QTest::keyClicks(clave, "taq123");
        QTest::keyClick(clave, Qt::Key_Return);
        QCOMPARE(aceptado, 1);
        QCOMPARE(terminado, 0);
        QVERIFY(!w.isVisible());
        QCOMPARE(textOf(env->db(), "select mac from usuarios where usuario='taquilla1'"), kEstaPc);
    }

    void cancelarTerminaElPrograma() {
        for (const bool conEscape : {false, true}) {
            frmLogin w(env->ctx);
            int terminado = 0;
            w.terminar = [&] { ++terminado; };
            w.show();
            if (conEscape)
                QTest::keyClick(w.findChild<QLineEdit*>("txtUserName"), Qt::Key_Escape);
            else
                QTest::mouseClick(w.findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
            QCOMPARE(terminado, 1);
            QVERIFY(!w.isVisible());
        }
    }

    void sesionEnOtraPcTerminaElPrograma() {
        env->db().exec("update usuarios set mac=?, fecha_ingreso=(select fecha from configuracion) where usuario='total'",
                       {kOtraPc});
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        int aceptado = 0, terminado = 0;
        w.alAceptar = [&] { ++aceptado; };
        w.terminar = [&] { ++terminado; };
        w.show();
        w.findChild<QLineEdit*>("txtUserName")->setText("total");
        w.findChild<QLineEdit*>("txtPassword")->setText("total123");
        QTest::mouseClick(w.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QCOMPARE(terminado, 1);
        QCOMPARE(aceptado, 0);
        QCOMPARE(env->dialogs.last().text, kSesionAbierta);
        QCOMPARE(textOf(env->db(), "select mac from usuarios where usuario='total'"), kOtraPc);
    }

    void direccionPublicaMostradaYRegistrada() {
        ServicioIp servicio((kIp + "\n").toUtf8());
        env->ctx.config.serviciosIp = puertoCerrado() + " " + servicio.url() + " " + servicio.url();
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        w.alAceptar = [] {};
        w.show();
        auto* datos = w.findChild<QLineEdit*>("Text_datos");
        QTRY_COMPARE(datos->text(), kIp);
        QCOMPARE(servicio.pedidos, 1);
        QCOMPARE(env->dialogs.count(), 0);
        w.findChild<QLineEdit*>("txtUserName")->setText("supervisor");
        w.findChild<QLineEdit*>("txtPassword")->setText("super123");
        QTest::mouseClick(w.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QCOMPARE(textOf(env->db(), "select ip_pc from usuarios where usuario='supervisor'"), kIp);
    }

    // Nobody answers: "Ups!" once, as a notice that stops nobody, and the
    // network label does not say "Online".
    void sinRespuestaAvisaUnaVezYNoDetiene() {
        env->ctx.config.serviciosIp = puertoCerrado() + " " + puertoCerrado() + " " + puertoCerrado();
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        int aceptado = 0;
        w.alAceptar = [&] { ++aceptado; };
        w.show();
        QTRY_VERIFY(!w.buscandoIp());
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().kind, ScriptedDialogs::Kind::Notice);
        QCOMPARE(env->dialogs.last().title, QString("Ups!"));
        QCOMPARE(env->dialogs.last().text, QString("Checkee su internet por favor, parece que esta fallando."));
        QCOMPARE(w.findChild<QLabel*>("Label_internet")->text(), QString("No hay Internet"));
        w.findChild<QLineEdit*>("txtUserName")->setText("supervisor");
        w.findChild<QLineEdit*>("txtPassword")->setText("super123");
        QTest::mouseClick(w.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QCOMPARE(aceptado, 1);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(textOf(env->db(), "select ip_pc from usuarios where usuario='supervisor'"), QString());
    }

    // Services that take their time (or never answer) do not hold the
    // sign-in: the menu opens at once, and the address is recorded when it
    // comes; silence is told once, later, without stopping anybody.
    void elIngresoNoEsperaALosServicios() {
        QTcpServer mudo;  // takes the connection and never answers
        mudo.listen(QHostAddress::LocalHost, 0);
        env->ctx.config.serviciosIp = QString("http://127.0.0.1:%1/ip").arg(mudo.serverPort());
        const int espera = env->ctx.config.esperaRedMs;
        env->ctx.config.esperaRedMs = 1500;
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        int aceptado = 0;
        w.alAceptar = [&] { ++aceptado; };
        w.show();
        QVERIFY(w.buscandoIp());
        QVERIFY(w.findChild<QLabel*>("Label_internet")->text() != "Online");
        w.findChild<QLineEdit*>("txtUserName")->setText("gerente");
        w.findChild<QLineEdit*>("txtPassword")->setText("gerente123");
        QElapsedTimer reloj;
        reloj.start();
        QTest::keyClick(w.findChild<QLineEdit*>("txtPassword"), Qt::Key_Return);
        QVERIFY2(reloj.elapsed() < 1000, qPrintable(QString::number(reloj.elapsed())));
        QCOMPARE(aceptado, 1);
        QVERIFY(!w.isVisible());
        QVERIFY(w.buscandoIp());
        QCOMPARE(env->dialogs.count(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!w.buscandoIp(), 10000);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().kind, ScriptedDialogs::Kind::Notice);
        QCOMPARE(env->dialogs.last().title, QString("Ups!"));
        QCOMPARE(textOf(env->db(), "select ip_pc from usuarios where usuario='gerente'"), QString());
        env->ctx.config.esperaRedMs = espera;
    }

    // An address that comes after the sign-in is recorded with the login
    // and shown; "Online" once the services answered.
    void laDireccionQueLlegaDespuesSeRegistra() {
        ServicioIp servicio(kIp.toUtf8());
        env->ctx.config.serviciosIp = servicio.url();
        frmLogin w(env->ctx);
        w.logica().mac = kEstaPc;
        w.alAceptar = [] {};
        QString tituloMenu;
        env->ctx.tituloMenu = [&](const QString& t) { tituloMenu = t; };
        w.show();
        w.findChild<QLineEdit*>("txtUserName")->setText("gerente");
        w.findChild<QLineEdit*>("txtPassword")->setText("gerente123");
        w.cmdOK_Click();
        QCOMPARE(textOf(env->db(), "select ip_pc from usuarios where usuario='gerente'"), QString());
        QTRY_COMPARE(textOf(env->db(), "select ip_pc from usuarios where usuario='gerente'"), kIp);
        QCOMPARE(env->ctx.session.ipPublica, kIp);
        QCOMPARE(w.findChild<QLineEdit*>("Text_datos")->text(), kIp);
        QVERIFY(!tituloMenu.isEmpty());
        if (HayInternet()) QCOMPARE(w.findChild<QLabel*>("Label_internet")->text(), QString("Online"));
        QCOMPARE(env->dialogs.count(), 0);
        env->ctx.tituloMenu = nullptr;
    }

    // Every demo user signs in through the window and gets the menu of its
    // level, built from the program's own window list.
    void cadaUsuarioDemoVeSuMenu() {
        WindowRegistry ventanas;
        registrarVentanas(ventanas);
        for (const DemoUsuario& u : usuariosDemo()) {
            init();
            frmLogin w(env->ctx);
            w.logica().mac = kEstaPc;
            std::unique_ptr<Form_MenuPrincipal> menu;
            w.alAceptar = [&] {
                menu = std::make_unique<Form_MenuPrincipal>(env->ctx, ventanas);
                menu->terminar = [] {};
                menu->show();
                QVERIFY(menu->cargar());
            };
            w.show();
            QTest::keyClicks(w.findChild<QLineEdit*>("txtUserName"), u.usuario);
            QTest::keyClick(w.findChild<QLineEdit*>("txtUserName"), Qt::Key_Return);
            QTest::keyClicks(w.findChild<QLineEdit*>("txtPassword"), u.clave);
            QTest::keyClick(w.findChild<QLineEdit*>("txtPassword"), Qt::Key_Return);
            QVERIFY2(menu, qPrintable(u.usuario));
            QCOMPARE(env->ctx.session.nivel, u.nivel);
            QCOMPARE(menu->windowTitle(), "MENU PRINCIPAL -  " + env->ctx.session.ch + " - " + u.usuario);
            for (const EntradaMenu& e : entradasMenu())
                if (menu->accion(e.nombre)->isVisible()) QVERIFY2(e.niveles.contains(u.nivel), qPrintable(e.nombre));
            QVERIFY(menu->accion("salir_menu2")->isVisible());
            QVERIFY(menu->accion("pimp_menu")->isVisible() == ventanas.has("pimp_menu"));
            // Notices of the administrator are for the levels that read them.
            for (const auto& b : env->dialogs.shown()) QCOMPARE(b.title, QString("ATENCION MENSAJE DEL ADMINISTRADOR"));
            menu.reset();
        }
    }
};

QTEST_MAIN(TstLogin)
#include "tst_login.moc"
