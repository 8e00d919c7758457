// The main menu over the demo day: what each level sees, the allow-lists,
// the void by code, the local schema rebuild, exit, the newer-version
// question and the group change, through the real window.
#include "core/Version.h"
#include "core/WindowRegistry.h"
#include "core/Guardia.h"
#include "signin/CambiarGrupo.h"
#include "signin/Form_CambiarGrupo.h"
#include "signin/Form_MenuPrincipal.h"
#include "signin/MenuEntradas.h"
#include "support/Boletos.h"
#include "support/TestEnv.h"

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTableView>
#include <QToolBar>
#include <QtTest>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

const QStringList kComunes = {"pimp_menu", "cerrar_menu", "salir_menu2"};

QStringList todas() {
    QStringList nombres;
    for (const EntradaMenu& e : entradasMenu()) nombres << e.nombre;
    return nombres;
}

}  // namespace

class TstMenu : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    WindowRegistry completo;  // a window for every entry and every auction board
    QHash<QString, int> creadas;
    int terminado = 0;
    QList<QUrl> abiertas;

    std::unique_ptr<Form_MenuPrincipal> abrirMenu(const QString& usuario, const WindowRegistry& ventanas) {
        env->signIn(usuario);
        env->dialogs.clear();
        auto menu = std::make_unique<Form_MenuPrincipal>(env->ctx, ventanas);
        menu->terminar = [this] { ++terminado; };
        menu->logica().abrirDireccion = [this](const QUrl& url) {
            abiertas << url;
            return true;
        };
        menu->show();
        menu->cargar();
        env->dialogs.clear();  // the administrator's notice of the demo day
        return menu;
    }

    QStringList visibles(Form_MenuPrincipal& menu) {
        QStringList v;
        for (const EntradaMenu& e : entradasMenu())
            if (menu.accion(e.nombre)->isVisible()) v << e.nombre;
        std::sort(v.begin(), v.end());
        return v;
    }

    // A sold winner ticket of the working day; returns its code.
    QString vender(int carrera, int caballo, double ganadores, const QString& grupo) {
        return venderBoleto(env->db(), env->clock.today(), carrera, caballo, ganadores, grupo, "LOS PINOS").codigo;
    }

    double contar(const std::string& sql, const Params& p = {}) { return numberOf(env->db(), sql, p); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("menu", true);
        env->loadDemo();
        QStringList nombres = todas() + tablerosSubasta();
        for (const QString& nombre : nombres) {
            if (esFuncionPropia(nombre) || nombre == "ch_menu_grupo") continue;
            completo.add(nombre, [this, nombre](Context&, QWidget*) -> QWidget* {
                ++creadas[nombre];
                auto* w = new QLabel("Ventana " + nombre);
                w->setObjectName(nombre);
                w->setWindowTitle(nombre);
                w->resize(320, 160);
                return w;
            });
        }
        completo.add("ch_menu_grupo", [](Context& ctx, QWidget* menu) { return new Form_CambiarGrupo(ctx, menu); });
    }

    void init() {
        creadas.clear();
        terminado = 0;
        abiertas.clear();
        env->dialogs.clear();
    }

    void visibilidadPorNivel_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QStringList>("esperadas");
        QTest::newRow("Taquilla") << "taquilla1" << QStringList{"vg_menu", "m_clientesj", "CT_ADMIN_MENU"};
        QTest::newRow("Taquilla2") << "taquilla2"
                                   << QStringList{"vg_menu",       "tb_menu",        "macuare_menu", "m_clientesj",
                                                  "CT_ADMIN_MENU", "tf_porTaquilla", "mc_pantalla"};
        QTest::newRow("Total") << "total"
                               << QStringList{"vg_menu",       "tb_menu",        "macuare_menu", "m_clientesj",
                                              "subasta_menu",  "CT_ADMIN_MENU",  "tf_porTaquilla",
                                              "mc_pantalla",   "tbfija_pant_menu"};
        QTest::newRow("TablaFija") << "tablafija" << QStringList{"tb_menu", "tf_porTaquilla", "tbfija_pant_menu"};
        QTest::newRow("Remate") << "remate"
                                << QStringList{"subasta_menu", "winremate_menu", "control61", "bdlocalmenu"};
        QTest::newRow("Gerente") << "gerente"
                                 << QStringList{"control61",      "rc_admin_menu", "rctf_admin_menu", "dd_admin_menu",
                                                "anular_menu",    "vt_ger_menu",   "gh_menu",         "gere_tf",
                                                "CT_ADMIN_MENU",  "tf_porTaquilla", "rst_menu",       "gd_menu",
                                                "diario_menu_tf", "mc_rpt_diario", "rvc_pt_menu",     "rvc_td_menu",
                                                "rpt_gen_admin_menu", "gpc_rptgeneral", "bt_menu",       "bit_tf_menu",     "User_gere",
                                                "ch_menu_grupo",  "bdlocalmenu"};
        QTest::newRow("Supervisor") << "supervisor"
                                    << QStringList{"winremate_menu", "control61",     "abrir_cerrar_menu",
                                                   "rc_admin_menu",  "dd_admin_menu", "imp_tfactual",
                                                   "cg_menu",        "CT_ADMIN_MENU", "rst_menu",
                                                   "gd_menu",        "bt_menu",       "mc_pantalla",
                                                   "tbfija_pant_menu", "ch_menu_principal", "ch_menu_grupo",
                                                   "bdlocalmenu"};
        QTest::newRow("SupervisorTF") << "suptf"
                                      << QStringList{"rctf_admin_menu", "cuadre_gantf_menu", "imp_tfactual",
                                                     "tf_porTaquilla",  "diario_menu_tf",    "bit_tf_menu",
                                                     "tbfija_pant_menu", "bdlocalmenu"};
        QTest::newRow("AdminTF") << "admintf"
                                 << QStringList{"rctf_admin_menu", "cuadre_gantf_menu", "imp_tfactual", "ctf_menu",
                                                "gere_tf",         "tf_porTaquilla",    "diario_menu_tf",
                                                "resgrupos_menu",  "bit_tf_menu",       "tbfija_pant_menu",
                                                "ch_menu_principal", "bdlocalmenu"};
        QTest::newRow("Socio") << "socio"
                               << QStringList{"control61",      "rc_admin_menu",  "rctf_admin_menu",
                                              "dd_admin_menu",  "cuadre_gantf_menu", "vt_ger_menu",
                                              "gh_menu",        "gere_tf",        "rst_menu",
                                              "gd_menu",        "diario_menu_tf", "mc_rpt_diario",
                                              "rvc_pt_menu",    "rvc_td_menu",    "resgrupos_menu", "rpt_gen_admin_menu", "gpc_rptgeneral",
                                              "ch_menu_grupo",  "bdlocalmenu"};
        QTest::newRow("Administrador") << "admin" << todas();
        QTest::newRow("Administrador Oculto") << "oculto" << todas();
    }

    void visibilidadPorNivel() {
        QFETCH(QString, usuario);
        QFETCH(QStringList, esperadas);
        auto menu = abrirMenu(usuario, completo);
        QStringList e = esperadas;
        for (const QString& c : kComunes)
            if (!e.contains(c)) e << c;
        std::sort(e.begin(), e.end());
        QCOMPARE(visibles(*menu), e);

        // The toolbar carries the shown sale entries and the board; a menu
        // with nothing to show is hidden, and so is an empty toolbar.
        bool conBotones = false;
        for (const QString b : {"vg_menu", "tb_menu", "macuare_menu", "m_clientesj", "subasta_menu"}) {
            QCOMPARE(menu->boton(b)->isVisible(), e.contains(b));
            conBotones = conBotones || e.contains(b);
        }
        QCOMPARE(menu->barra()->isVisibleTo(menu.get()), conBotones);
        for (const QString& titulo : menusPrincipales()) {
            bool alguna = false;
            for (const EntradaMenu& en : entradasMenu()) alguna = alguna || (en.menu == titulo && e.contains(en.nombre));
            QCOMPARE(menu->menu(titulo)->menuAction()->isVisible(), alguna);
        }
        if (usuario == "taquilla1" || usuario == "admin") {
            grab(menu.get(), "Form_MenuPrincipal_" + usuario);
            QMenu* sistema = menu->menu("&Sistema");
            sistema->popup(menu->mapToGlobal(QPoint(0, 0)));
            grab(sistema, "Form_MenuPrincipal_" + usuario + "_sistema");
            sistema->hide();
        }
    }

    // Every entry is shown to some level, and every allow-listed level sees its entry.
    void tablaCompleta() {
        for (const EntradaMenu& e : entradasMenu()) {
            QVERIFY2(!e.niveles.isEmpty(), qPrintable(e.nombre));
            QVERIFY(e.niveles.contains("Administrador"));
            for (const QString& n : e.niveles) QVERIFY2(todosLosNiveles().contains(n), qPrintable(n));
        }
        QVERIFY(buscarEntrada("abrir_cerrar_menu"));
        for (const char* e : {"bancos_menu", "tipos_operacion_menu"})
            QCOMPARE(buscarEntrada(e)->permitidos, (QStringList{"Administrador Oculto", "Administrador"}));
        QCOMPARE(buscarEntrada("ch_menu_principal")->permitidos,
                 (QStringList{"Administrador Oculto", "Administrador", "Admin_TF", "Supervisor"}));
    }

    // Only what can open is shown: with no windows, the menu's own functions.
    void sinVentanasSoloFuncionesPropias() {
        WindowRegistry vacio;
        auto menu = abrirMenu("admin", vacio);
        QCOMPARE(visibles(*menu), (QStringList{"anular_menu", "bdlocalmenu", "cerrar_menu", "salir_menu2"}));
        QVERIFY(!menu->barra()->isVisibleTo(menu.get()));
        auto taquilla = abrirMenu("taquilla1", vacio);
        QCOMPARE(visibles(*taquilla), (QStringList{"cerrar_menu", "salir_menu2"}));
    }

    void ventasSegunPermitir() {
        env->db().exec("update configuracion set permitir_tf=0, permitir_mc=1");
        auto menu = abrirMenu("total", completo);
        env->db().exec("update configuracion set permitir_tf=1, permitir_mc=1");
        QVERIFY(menu->accion("tb_menu")->isVisible());
        QVERIFY(!menu->accion("tb_menu")->isEnabled());
        QVERIFY(!menu->boton("tb_menu")->isEnabled());
        QVERIFY(menu->accion("macuare_menu")->isEnabled());
        menu->boton("tb_menu")->trigger();
        QCOMPARE(creadas.value("tb_menu"), 0);
    }

    void listasDePermitidos_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<bool>("abre");
        QTest::newRow("AdminTF is not Admin_TF") << "admintf" << "ch_menu_principal" << false;
        QTest::newRow("Supervisor, centres") << "supervisor" << "ch_menu_principal" << true;
        QTest::newRow("hidden administrator, centres") << "oculto" << "ch_menu_principal" << true;
        QTest::newRow("Supervisor, race card") << "supervisor" << "carreras_menu" << false;
        QTest::newRow("administrator, race card") << "admin" << "carreras_menu" << true;
        QTest::newRow("Supervisor, open and close") << "supervisor" << "abrir_cerrar_menu" << true;
        QTest::newRow("Gerente, open and close") << "gerente" << "abrir_cerrar_menu" << false;
        QTest::newRow("Gerente, winners pool") << "gerente" << "cg_menu" << false;
        QTest::newRow("Supervisor, winners pool") << "supervisor" << "cg_menu" << true;
        QTest::newRow("SupervisorTF, fixed-table pool") << "suptf" << "ctf_menu" << false;
        QTest::newRow("AdminTF, fixed-table pool") << "admintf" << "ctf_menu" << true;
        QTest::newRow("Gerente, users") << "gerente" << "cu_menu" << false;
        QTest::newRow("Socio, groups") << "socio" << "grupos_menu" << false;
        QTest::newRow("Socio, settings") << "socio" << "configuracion_menu" << false;
        QTest::newRow("booth, no allow-list") << "taquilla1" << "rst_menu" << true;
    }

    void listasDePermitidos() {
        QFETCH(QString, usuario);
        QFETCH(QString, entrada);
        QFETCH(bool, abre);
        auto menu = abrirMenu(usuario, completo);
        menu->accion(entrada)->trigger();
        QCOMPARE(creadas.value(entrada), abre ? 1 : 0);
        QCOMPARE(menu->area()->subWindowList().size(), abre ? 1 : 0);
        if (abre) {
            QCOMPARE(env->dialogs.count(), 0);
        } else {
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().text, QString(" Usted no posee acceso a esta parte del sistema"));
            QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        }
    }

    void unaVentanaPorEntrada() {
        auto menu = abrirMenu("admin", completo);
        menu->accion("vg_menu")->trigger();
        QMdiSubWindow* primera = menu->area()->activeSubWindow();
        QVERIFY(primera);
        QCOMPARE(primera->widget()->objectName(), QString("vg_menu"));
        menu->accion("gd_menu")->trigger();
        QCOMPARE(menu->area()->subWindowList().size(), 2);
        menu->boton("vg_menu")->trigger();  // the toolbar shows the same window again
        QCOMPARE(creadas.value("vg_menu"), 1);
        QCOMPARE(menu->area()->activeSubWindow(), primera);
        QCOMPARE(menu->area()->subWindowList().size(), 2);

        // A window that closes itself takes its frame along; the next click opens a new one.
        primera->widget()->close();
        QTRY_COMPARE(menu->area()->subWindowList().size(), 1);
        menu->accion("vg_menu")->trigger();
        QCOMPARE(creadas.value("vg_menu"), 2);
    }

    void tituloDelMenu() {
        auto menu = abrirMenu("taquilla1", completo);
        QCOMPARE(menu->windowTitle(), QString("MENU PRINCIPAL -  LOS PINOS - taquilla1"));
        env->ctx.ponerTituloMenu("MENU PRINCIPAL - CARRERA 3 ABIERTA");
        QCOMPARE(menu->windowTitle(), QString("MENU PRINCIPAL - CARRERA 3 ABIERTA"));
        menu.reset();
        env->ctx.ponerTituloMenu("nadie escucha");  // the hook went with the menu
    }

    void avisoDelAdministrador_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<bool>("avisa");
        QTest::newRow("administrator") << "admin" << "PAGAR ANTES DEL VIERNES" << true;
        QTest::newRow("partner") << "socio" << "PAGAR ANTES DEL VIERNES" << true;
        QTest::newRow("manager") << "gerente" << "PAGAR ANTES DEL VIERNES" << true;
        QTest::newRow("hidden administrator") << "oculto" << "PAGAR ANTES DEL VIERNES" << false;
        QTest::newRow("booth") << "taquilla1" << "PAGAR ANTES DEL VIERNES" << false;
        QTest::newRow("no notice") << "admin" << "  " << false;
    }

    void avisoDelAdministrador() {
        QFETCH(QString, usuario);
        QFETCH(QString, mensaje);
        QFETCH(bool, avisa);
        env->db().exec("update configuracion set mensaje=?", {mensaje});
        env->signIn(usuario);
        env->dialogs.clear();
        auto menu = std::make_unique<Form_MenuPrincipal>(env->ctx, completo);
        QVERIFY(menu->cargar());
        env->db().exec("update configuracion set mensaje='Bienvenidos.'");
        QCOMPARE(env->dialogs.count(), avisa ? 1 : 0);
        if (avisa) {
            QCOMPARE(env->dialogs.last().title, QString("ATENCION MENSAJE DEL ADMINISTRADOR"));
            QCOMPARE(env->dialogs.last().text, mensaje);
            QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        }
        QStringList paneles = menu->logica().panelesEstado();
        QVERIFY(paneles.contains("RED DE CENTROS HIPICOS"));
        QVERIFY(paneles.contains("...::: 4.0.04 :::..."));
        QVERIFY(paneles.contains("Fecha: " + env->clock.today().toString("dd-MM-yyyy")));
    }

    void nuevaVersion() {
        Db& db = env->db();
        db.exec("update configuracion set version=?, mensaje=''", {double(kVersionNumero + 1)});
        // No: the menu stays.
        env->signIn("taquilla1");
        env->dialogs.clear();
        env->dialogs.no();
        {
            Form_MenuPrincipal menu(env->ctx, completo);
            menu.terminar = [this] { ++terminado; };
            menu.logica().abrirDireccion = [this](const QUrl& u) {
                abiertas << u;
                return true;
            };
            QVERIFY(menu.cargar());
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().kind, ScriptedDialogs::Kind::Confirm);
            QCOMPARE(env->dialogs.last().title, QString("Actualización de Sistema"));
            QCOMPARE(env->dialogs.last().text, QString("Ya existe una nueva versión del sistema, ¿desea descargarla ahora?"));
            QCOMPARE(env->dialogs.last().icon, Icon::Question);
            QCOMPARE(terminado, 0);
            QVERIFY(abiertas.isEmpty());

            // Yes: the download address opens and the program ends.
            env->dialogs.yes();
            QVERIFY(!menu.cargar());
            QCOMPARE(terminado, 1);
            QCOMPARE(abiertas, QList<QUrl>{QUrl("https://descargas.hipico.example/hipico")});
        }
        // The same version asks nothing.
        db.exec("update configuracion set version=?", {double(kVersionNumero)});
        env->dialogs.clear();
        auto menu = abrirMenu("taquilla1", completo);
        QCOMPARE(env->dialogs.count(), 0);
        db.exec("update configuracion set mensaje='Bienvenidos.'");
    }

    void salir() {
        Db& db = env->db();
        db.exec("update usuarios set mac='AA:AA:AA:AA:AA:AA'");
        const double conMac = contar("select count(*) from usuarios where mac<>''");
        auto menu = abrirMenu("admin", completo);

        env->dialogs.no();
        menu->accion("cerrar_menu")->trigger();
        QCOMPARE(env->dialogs.last().title, QString("SALIR DEL SISTEMA"));
        QCOMPARE(env->dialogs.last().text, QString("Esta seguro de salir del sistema"));
        // "No" is the default answer: an Enter typed ahead never ends the program.
        QVERIFY(env->dialogs.last().noByDefault);
        QVERIFY(menu->isVisible());
        QCOMPARE(terminado, 0);
        QCOMPARE(contar("select count(*) from usuarios where mac<>''"), conMac);

        env->dialogs.yes();
        menu->accion("salir_menu2")->trigger();
        QVERIFY(!menu->isVisible());
        QCOMPARE(terminado, 1);
        QCOMPARE(textOf(db, "select mac from usuarios where usuario='admin'"), QString());
        QCOMPARE(contar("select count(*) from usuarios where mac<>''"), conMac - 1);
    }

    void cerrarLaVentanaPregunta() {
        auto menu = abrirMenu("taquilla1", completo);
        env->dialogs.no();
        menu->close();
        QVERIFY(menu->isVisible());
        env->dialogs.yes();
        menu->close();
        QVERIFY(!menu->isVisible());
        QCOMPARE(terminado, 1);
    }

    void anular() {
        Db& db = env->db();
        const QString fecha = textOf(db, "select fecha from configuracion");
        const QString bueno = vender(3, 4, 2, "07");
        const QString otroGrupo = vender(3, 5, 1, "08");
        const QString procesado = vender(5, 1, 3, "07");
        db.exec("update carreras set win_ganadores=2 where fecha=? and carrera=5", {fecha});
        auto menu = abrirMenu("admin", completo);
        const double bitacora = contar("select count(*) from bitacora");
        const double boletos = contar("select count(*) from ma_principal");

        struct Caso {
            QString codigo;
            QString mensaje;
        };
        const Caso fallidos[] = {
            {"999999", "EL BOLETO NO SE PUEDE ANULAR"},
            {"' or '1'='1", "EL BOLETO NO SE PUEDE ANULAR"},
            {otroGrupo, "EL BOLETO NO SE PUEDE ANULAR"},
            {procesado, "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA"},
        };
        for (const Caso& c : fallidos) {
            env->dialogs.clear();
            env->dialogs.type(c.codigo).type("ANULADO");
            menu->accion("anular_menu")->trigger();
            QCOMPARE(env->dialogs.count(), 3);
            QCOMPARE(env->dialogs.shown()[0].title, QString("CODIGO DEL BOLETO"));
            QCOMPARE(env->dialogs.shown()[0].text, QString("INGRESE EL CODIGO DEL BOLETO"));
            QCOMPARE(env->dialogs.shown()[1].text, QString("INGRESE EL MOTIVO"));
            QCOMPARE(env->dialogs.last().text, c.mensaje);
            QCOMPARE(env->dialogs.last().icon, Icon::Critical);
            QCOMPARE(contar("select count(*) from bitacora"), bitacora);
            QCOMPARE(contar("select count(*) from ma_principal"), boletos);
        }

        // Cancel at either question: nothing asked further, nothing written.
        env->dialogs.clear();
        env->dialogs.cancel();
        menu->accion("anular_menu")->trigger();
        env->dialogs.type(bueno).cancel();
        menu->accion("anular_menu")->trigger();
        QCOMPARE(env->dialogs.count(), 3);
        QCOMPARE(contar("select count(*) from ma_principal"), boletos);

        env->dialogs.clear();
        env->dialogs.type(bueno).type("CLIENTE DESISTIO");
        menu->accion("anular_menu")->trigger();
        QCOMPARE(env->dialogs.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(env->dialogs.last().icon, Icon::Information);
        QCOMPARE(contar("select count(*) from ma_principal where nu_boleto=?", {bueno}), 0.0);
        const Row log = db.query("select * from bitacora where nu_boleto=?", {bueno}).first();
        QCOMPARE(log.integer("estatus"), 5LL);
        QCOMPARE(log.text("motivo"), QString("CLIENTE DESISTIO"));
        QCOMPARE(log.text("usuario"), QString("admin"));
        QCOMPARE(log.text("grupo"), QString("07"));
        QCOMPARE(log.number("ganadores"), 2.0);
        QCOMPARE(contar("select count(*) from bitacora"), bitacora + 1);

        // The same code again: no longer there.
        env->dialogs.type(bueno).type("ANULADO");
        menu->accion("anular_menu")->trigger();
        QCOMPARE(env->dialogs.last().text, QString("EL BOLETO NO SE PUEDE ANULAR"));
        QCOMPARE(contar("select count(*) from bitacora"), bitacora + 1);
    }

    void anularSoloGerenteYAdministrador_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<bool>("puede");
        QTest::newRow("Gerente") << "gerente" << true;
        QTest::newRow("Administrador") << "admin" << true;
        QTest::newRow("Administrador Oculto") << "oculto" << false;
        QTest::newRow("Supervisor") << "supervisor" << false;
        QTest::newRow("Taquilla") << "taquilla1" << false;
    }

    void anularSoloGerenteYAdministrador() {
        QFETCH(QString, usuario);
        QFETCH(bool, puede);
        const QString codigo = vender(4, 2, 1, "07");
        env->signIn(usuario);
        env->dialogs.clear();
        MenuPrincipal logica(env->ctx, completo);
        if (puede) env->dialogs.type(codigo).type("ANULADO");
        const auto r = logica.AnularBoleto();
        QCOMPARE(r, puede ? MenuPrincipal::Anulacion::Anulado : MenuPrincipal::Anulacion::SinAcceso);
        if (!puede) {
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().text, QString(" Usted no posee acceso a esta parte del sistema"));
        }
        QCOMPARE(contar("select count(*) from ma_principal where nu_boleto=?", {codigo}), puede ? 0.0 : 1.0);
    }

    void anularNadaAMedias() {
        Db& db = env->db();
        const QString codigo = vender(6, 3, 1, "07");
        const double bitacora = contar("select count(*) from bitacora");
        env->signIn("gerente");
        env->dialogs.clear();
        db.exec("CREATE TRIGGER no_borrar BEFORE DELETE ON ma_principal FOR EACH ROW "
                "SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'borrado rechazado'");
        MenuPrincipal logica(env->ctx, completo);
        env->dialogs.type(codigo).type("ANULADO");
        const auto r = logica.AnularBoleto();
        db.exec("DROP TRIGGER no_borrar");
        QCOMPARE(r, MenuPrincipal::Anulacion::Error);
        QCOMPARE(env->dialogs.last().text, kMensajeErrorBD);
        QCOMPARE(contar("select count(*) from bitacora"), bitacora);
        QCOMPARE(contar("select count(*) from ma_principal where nu_boleto=?", {codigo}), 1.0);
    }

    // Results processing that marks the ticket a winner while the void waits
    // for the ticket: the void sees the processed race and writes nothing.
    void anularMientrasSeProcesa() {
        const QString codigo = vender(7, 2, 3, "07");
        env->signIn("gerente");
        const QString fecha = env->ctx.session.fecha;
        auto proceso = env->connect();
        proceso->begin();
        proceso->exec("update carreras set win_ganadores=2 where fecha=? and carrera=7", {fecha});
        proceso->exec("update ma_principal set estatus=1, cobrado=ganadores*4.5 where nu_boleto=?", {codigo});

        ScriptedDialogs dialogos;
        dialogos.type(codigo).type("ANULADO");
        Context otro(env->config, dialogos, env->clock);
        // On the processing's server: the void waits for its locks there (on
        // two cluster nodes the void would go first and the processing's
        // commit would be the one run again).
        otro.cnServidor = Db::open(proceso->connectionString());
        otro.session = env->ctx.session;
        MenuPrincipal logica(otro, completo);
        MenuPrincipal::Anulacion r = MenuPrincipal::Anulacion::Error;
        std::thread anulacion([&] { r = logica.AnularBoleto(); });
        QTest::qWait(300);
        proceso->commit();
        anulacion.join();
        QCOMPARE(r, MenuPrincipal::Anulacion::CarreraProcesada);
        QCOMPARE(dialogos.last().text, QString("EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA"));
        QCOMPARE(contar("select estatus from ma_principal where nu_boleto=?", {codigo}), 1.0);
        QCOMPARE(contar("select count(*) from bitacora where nu_boleto=?", {codigo}), 0.0);
    }

    // Two managers void the same ticket at once: one voids it, one is told it is gone.
    void anularDosALaVez() {
        const QString codigo = vender(4, 6, 1, "07");
        env->signIn("gerente");
        struct Caja {
            ScriptedDialogs dialogos;
            std::unique_ptr<Context> ctx;
            MenuPrincipal::Anulacion r = MenuPrincipal::Anulacion::Error;
        };
        Caja cajas[2];
        for (Caja& c : cajas) {
            c.dialogos.type(codigo).type("ANULADO");
            c.ctx = std::make_unique<Context>(env->config, c.dialogos, env->clock);
            c.ctx->cnServidor = env->connect();
            c.ctx->session = env->ctx.session;
        }
        std::vector<std::thread> hilos;
        for (Caja& c : cajas)
            hilos.emplace_back([&c, this] { c.r = MenuPrincipal(*c.ctx, completo).AnularBoleto(); });
        for (auto& h : hilos) h.join();
        QCOMPARE(int(cajas[0].r == MenuPrincipal::Anulacion::Anulado) + int(cajas[1].r == MenuPrincipal::Anulacion::Anulado), 1);
        QVERIFY(cajas[0].r == MenuPrincipal::Anulacion::NoEncontrado || cajas[1].r == MenuPrincipal::Anulacion::NoEncontrado);
        QCOMPARE(contar("select count(*) from bitacora where nu_boleto=?", {codigo}), 1.0);
        QCOMPARE(contar("select count(*) from ma_principal where nu_boleto=?", {codigo}), 0.0);
    }

    void tableroDeSubasta_data() {
        QTest::addColumn<int>("subastas");
        QTest::addColumn<int>("rematetam");
        QTest::addColumn<QString>("tablero");
        QTest::newRow("2") << 2 << 0 << "Form_Subasta_2T";
        QTest::newRow("2 large") << 2 << 1 << "Form_Subasta_2T_800";
        QTest::newRow("3") << 3 << 0 << "Form_Subasta_3T";
        QTest::newRow("3 large") << 3 << 1 << "Form_Subasta_3T";
        QTest::newRow("4") << 4 << 0 << "Form_Subasta_4T";
        QTest::newRow("5") << 5 << 1 << "Form_Subasta_5T";
        QTest::newRow("10") << 10 << 0 << "Form_SubastaINT_2T";
        QTest::newRow("0") << 0 << 0 << "";
        QTest::newRow("7") << 7 << 0 << "";
    }

    void tableroDeSubasta() {
        QFETCH(int, subastas);
        QFETCH(int, rematetam);
        QFETCH(QString, tablero);
        QCOMPARE(MenuPrincipal::tableroPara(subastas, rematetam), tablero);
        // Chosen by the group's values read when clicked, not at sign-in.
        auto menu = abrirMenu("remate", completo);
        env->db().exec("update grupos set subastas=?, rematetam=? where grupo='08'", {subastas, rematetam});
        menu->boton("subasta_menu")->trigger();
        env->db().exec("update grupos set subastas=2, rematetam=0");
        QCOMPARE(menu->area()->subWindowList().size(), tablero.isEmpty() ? 0 : 1);
        if (!tablero.isEmpty()) QCOMPARE(menu->area()->activeSubWindow()->widget()->objectName(), tablero);
        QCOMPARE(env->ctx.session.subastas, subastas);
    }

    void subastaSinTableros() {
        WindowRegistry soloVenta;
        soloVenta.add("vg_menu", [](Context&, QWidget*) { return new QLabel("venta"); });
        auto menu = abrirMenu("total", soloVenta);
        QVERIFY(menu->accion("vg_menu")->isVisible());
        QVERIFY(!menu->accion("subasta_menu")->isVisible());
        QVERIFY(!menu->boton("subasta_menu")->isVisible());
    }

    void baseLocal() {
        auto menu = abrirMenu("admin", completo);
        Db& local = env->local();
        local.exec("INSERT INTO rpt_caballos_tf (carrera, numero, caballo) VALUES (1, 1, 'X')");
        local.exec("UPDATE conf_local SET impresion=0");

        env->dialogs.no();
        menu->accion("bdlocalmenu")->trigger();
        QCOMPARE(env->dialogs.last().title, QString("confirmar"));
        QCOMPARE(env->dialogs.last().text, QString(" ¿Esta usted seguro de querer borrar la bd local?"));
        QCOMPARE(numberOf(env->local(), "select count(*) from rpt_caballos_tf"), 1.0);

        for (int vez = 0; vez < 2; ++vez) {
            env->dialogs.clear();
            env->dialogs.yes();
            menu->accion("bdlocalmenu")->trigger();
            QCOMPARE(env->dialogs.count(), 2);
            QCOMPARE(env->dialogs.last().title, QString("Administración del Sistema"));
            QCOMPARE(env->dialogs.last().text, QString("Se ha borrado con exito la bd local"));
            QCOMPARE(env->dialogs.last().icon, Icon::Information);
            QCOMPARE(numberOf(env->local(), "select count(*) from rpt_caballos_tf"), 0.0);
            QCOMPARE(numberOf(env->local(), "select count(*) from conf_local"), 1.0);
            QCOMPARE(numberOf(env->local(), "select impresion from conf_local where id=1"), 1.0);
        }
        QVERIFY(env->ctx.hasRecordset("rsRptCaballosTF"));

        // A machine without its local schema gets it too.
        env->ctx.cnLocal.reset();
        {
            auto servidor = env->connect();
            servidor->exec(("drop schema `" + env->config.localBase + "`").toStdString());
        }
        env->dialogs.clear();
        env->dialogs.yes();
        QVERIFY(menu->logica().BorrarBDLocal());
        QCOMPARE(numberOf(env->local(), "select count(*) from conf_local"), 1.0);
    }

    void tablaFijaCarreraActual() {
        auto menu = abrirMenu("supervisor", completo);
        const QString fecha = textOf(env->db(), "select fecha from configuracion");
        const double caballos = contar("select count(*) from carreras where fecha=? and carrera=1 and id_hipodromo="
                                     "(select id_hipodromo from configuracion)",
                                     {fecha});
        QVERIFY(caballos > 0);
        menu->accion("imp_tfactual")->trigger();
        QCOMPARE(creadas.value("imp_tfactual"), 1);
        QCOMPARE(numberOf(env->local(), "select count(*) from rpt_caballos_tf"), caballos);
        QCOMPARE(numberOf(env->local(), "select count(*) from rpt_caballos_tf where valor=5 and carrera=1 and ch=?",
                          {"LOS PINOS"}),
                 caballos);
        menu->accion("imp_tfactual")->trigger();  // refilled, not added to
        QCOMPARE(numberOf(env->local(), "select count(*) from rpt_caballos_tf"), caballos);
    }

    void cambioDeGrupo_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QStringList>("grupos");
        QTest::newRow("Socio: the subgroup") << "socio" << QStringList{"07", "08"};
        QTest::newRow("Administrador: all") << "admin" << QStringList{"07", "08", "12", "15"};
        QTest::newRow("Gerente: the centre") << "gerente" << QStringList{"07", "08"};
        QTest::newRow("booth in MARACAY") << "taquilla3" << QStringList{"12", "15"};
    }

    void cambioDeGrupo() {
        QFETCH(QString, usuario);
        QFETCH(QStringList, grupos);
        Db& db = env->db();
        env->signIn(usuario);
        env->dialogs.clear();
        CambiarGrupo logica(env->ctx);
        QStringList lista;
        for (const Row& r : logica.grupos()) lista << r.text("grupo");
        QCOMPARE(lista, grupos);

        // A group that does not sell winner bets is not offered.
        db.exec("update grupos set ganadores=0 where grupo=?", {grupos.last()});
        lista.clear();
        for (const Row& r : logica.grupos()) lista << r.text("grupo");
        db.exec("update grupos set ganadores=1");
        QCOMPARE(lista, grupos.mid(0, grupos.size() - 1));

        // A group outside the list is refused and changes nothing.
        const QString antes = env->ctx.session.grupo;
        QVERIFY(!logica.cambiar("99"));
        QCOMPARE(env->dialogs.last().text, QString("DEBE ELEGIR UN GRUPO DE LA LISTA"));
        QCOMPARE(env->ctx.session.grupo, antes);
    }

    void cambioDeGrupoEnLaVentana() {
        Db& db = env->db();
        db.exec("update grupos set ticket_cobro=0, name_empresa='MARACAY C.A.', `4cabvr2`=7.5, mascara=1 "
                "where grupo='12'");
        const auto checksum = [&] {
            QStringList sumas;
            for (const Row& r : db.query("CHECKSUM TABLE grupos, usuarios, configuracion")) sumas << r.text("Checksum");
            return sumas;
        };
        const QStringList antes = checksum();
        auto menu = abrirMenu("admin", completo);
        QCOMPARE(env->ctx.session.ticketCobro, 1);
        menu->accion("ch_menu_grupo")->trigger();
        auto* ventana = menu->findChild<Form_CambiarGrupo*>();
        QVERIFY(ventana);
        QTableView* lista = ventana->lista();
        QCOMPARE(lista->model()->rowCount(), 4);
        QCOMPARE(lista->currentIndex().row(), 0);  // the session's own group is chosen
        grab(menu.get(), "Form_CambiarGrupo");
        QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(lista, Qt::Key_Down);
        QCOMPARE(lista->model()->index(lista->currentIndex().row(), 0).data().toString(), QString("12"));
        QTest::keyClick(lista, Qt::Key_Return);
        QCOMPARE(env->dialogs.last().title, QString("ACCIONES"));
        QCOMPARE(env->dialogs.last().text, QString("GRUPO CAMBIADO CON EXITO"));
        QCOMPARE(env->dialogs.last().icon, Icon::Information);

        const Session& s = env->ctx.session;
        QCOMPARE(s.grupo, QString("12"));
        QCOMPARE(s.ch, QString("MARACAY"));
        QCOMPARE(s.subgrupo, QString("S2"));
        QCOMPARE(s.ticketCobro, 0);
        QCOMPARE(s.nameEmpresa, QString("MARACAY C.A."));
        QCOMPARE(s.cuatroCabVr2, 7.5);
        QCOMPARE(s.mascara, 1);
        QCOMPARE(s.usuario, QString("admin"));
        QCOMPARE(s.nivel, QString("Administrador"));
        QCOMPARE(menu->windowTitle(), QString("MENU PRINCIPAL -  MARACAY - admin"));
        QVERIFY(menu->logica().panelesEstado().contains("Centro: MARACAY  Grupo: 12"));
        QTRY_COMPARE(menu->area()->subWindowList().size(), 0);
        QCOMPARE(checksum(), antes);
    }
};

QTEST_MAIN(TstMenu)
#include "tst_menu.moc"
