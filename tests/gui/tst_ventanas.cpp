// Every window of the program on the shared base window: the field with the
// cursor when it opens, Esc and Ctrl+F4, a database failure in one of its
// commands told once through the error guard (the driver's text only in the
// administrator's log), and its picture at the booths' two screen sizes; it
// opens inside the menu's area, nothing of it is cut off on a 1024x768
// screen, and it keeps its size when another window closes. Also the key
// filters of the text boxes and Qt's standard buttons in Spanish.
#include "core/Connections.h"
#include "core/Guardia.h"
#include "core/RegistroErrores.h"
#include "gui/Estilo.h"
#include "gui/Teclado.h"
#include "races/Form_AbrirCerrar.h"
#include "reportes/VentanasReporte.h"
#include "signin/frmLogin.h"
#include "support/Ventanas.h"

#include <QAbstractScrollArea>
#include <QFile>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>
#include <algorithm>
#include <functional>

using namespace hipico;
using namespace hipico::test;

namespace {

// One window as a user opens it.
struct Caso {
    QString nombre;    // the window's name
    QString entrada;   // its main-menu entry ("" for the sign-in and the menu itself)
    QString usuario;   // the demo user who opens it ("" for the sign-in)
    QString cursor;    // the field with the cursor when it opens ("" for none)
    bool escCierra;    // the booth's Esc cancels what is typed instead
};

const QVector<Caso>& casos() {
    static const QVector<Caso> todos = {
        {"frmLogin", "", "", "txtUserName", true},
        {"Form_MenuPrincipal", "", "admin", "", true},
        {"Form_Venta_WIN", "vg_menu", "taquilla1", "Text_Caballo", false},
        {"Form_Venta_TF", "tb_menu", "tablafija", "Text_Caballo", false},
        {"Form_Admin_TF", "ctf_menu", "admintf", "carrera", true},
        {"Form_GerenciaTF", "gere_tf", "admintf", "carrera", true},
        {"Form_Pant_TF", "tbfija_pant_menu", "admin", "", true},
        {"Form_ConfImpresion", "pimp_menu", "taquilla1", "Combo_Puerto", true},
        {"Form_RPT_CuadreTaqWIn", "CT_ADMIN_MENU", "admin", "DTPicker1", true},
        {"Form_Carreras", "carreras_menu", "admin", "busqueda", true},
        {"Form_AbrirCerrar", "abrir_cerrar_menu", "admin", "hipodromo", true},
        {"Form_CambiarGrupo", "ch_menu_grupo", "admin", "lstGrupos", true},
        {"Form_ConfiguracionGeneral", "configuracion_menu", "admin", "fecha", true},
        {"Form_Admin_Win", "cg_menu", "admin", "carrera", true},
        {"Form_Geren_Ganadores", "vt_ger_menu", "gerente", "carrera", true},
        {"Form_Gerencia_Grupos", "gh_menu", "gerente", "carrera", true},
        {"Form_Hipicos", "ch_menu_principal", "admin", "Grilla", true},
        {"Form_Usuarios", "cu_menu", "admin", "Grilla", true},
        {"Form_IngresoJugadas", "m_clientesj", "taquilla1", "Text_Bus2", true},
        {"Form_Bancos", "bancos_menu", "admin", "Grilla", true},
        {"Form_Subasta_2T", "Form_Subasta_2T", "remate", "carrera", true},
        {"Form_Subasta_2T_800", "Form_Subasta_2T_800", "remate", "carrera", true},
        {"Form_Subasta_3T", "Form_Subasta_3T", "remate", "carrera", true},
        {"Form_Subasta_4T", "Form_Subasta_4T", "remate", "carrera", true},
        {"Form_Subasta_5T", "Form_Subasta_5T", "remate", "carrera", true},
        {"Form_SubastaINT_2T", "Form_SubastaINT_2T", "remate", "carrera", true},
        {"Form_Admin_Remate", "winremate_menu", "remate", "carrera", true},
        {"Form_RptSubasta_Fechas", "control61", "admin", "desde", true},
        {"form_Venta_MC", "macuare_menu", "taquilla2", "Text_datos0", false},
        {"form_Admin_MC", "admin_mc", "admin", "Text_ganador1", true},
        {"Form_Pant_MC", "mc_pantalla", "admin", "", true},
    };
    static const QVector<Caso> conReportes = [] {
        QVector<Caso> v = todos;
        for (const DescripcionReporte& d : ventanasReporte()) v.append({d.nombre, d.entrada, "admin", "DTPicker1", true});
        return v;
    }();
    return conReportes;
}

const Caso& caso(const QString& nombre) {
    for (const Caso& c : casos())
        if (c.nombre == nombre) return c;
    qFatal("ventana desconocida: %s", qPrintable(nombre));
}

// A database failure while a window works: what breaks, what the user does,
// and the driver's words the log must keep.
struct Fallo {
    QString ventana;
    QString romper;   // statement run from another connection; "" kills the window's connection
    bool alAbrir;     // broken before the window opens: the failure is its load
    std::function<void(QWidget*)> comando;
    bool conexion;    // the connection message instead of the database one
    QString enRegistro;
};

void escribir(QWidget* ventana, const char* campo, const QString& texto) {
    QTest::keyClicks(ventana->findChild<QWidget*>(campo), texto);
}

const QVector<Fallo>& fallos() {
    static const QVector<Fallo> todos = {
        // The names follow what is typed: two keys, one message.
        {"Form_Carreras", "DROP TABLE caballos", false, [](QWidget* w) { escribir(w, "busqueda", "AB"); }, false,
         "caballos"},
        // The indicators refresh every second: three ticks, one message.
        {"Form_AbrirCerrar", "DROP TABLE carreras", false,
         [](QWidget* w) {
             for (int i = 0; i < 3; ++i) qobject_cast<Form_AbrirCerrar*>(w)->refrescar();
         },
         false, "carreras"},
        {"Form_Venta_WIN", "DROP TABLE ma_principal", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("bton_buscar"), Qt::LeftButton); }, false,
         "ma_principal"},
        {"Form_RPT_CuadreTaqWIn", "DROP TABLE grupos", true, [](QWidget*) {}, false, "grupos"},
        {"Form_RVC_WIN", "DROP TABLE ventas_ganadores_general", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("Boton_Reporte"), Qt::LeftButton); }, false,
         "ventas_ganadores_general"},
        {"Form_ConfiguracionGeneral", "DROP TABLE configuracion", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("Boton_Guardar"), Qt::LeftButton); }, false,
         "configuracion"},
        {"Form_Subasta_2T", "DROP TABLE carreras_remate", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("cargar"), Qt::LeftButton); }, false,
         "carreras_remate"},
        {"Form_CambiarGrupo", "DROP TABLE grupos", false,
         [](QWidget* w) { QTest::keyClick(w->findChild<QWidget*>("lstGrupos"), Qt::Key_Return); }, false, "grupos"},
        // The record of the row chosen is read when the row is chosen.
        {"Form_Hipicos", "DROP TABLE grupos", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("Boton_Ultimo"), Qt::LeftButton); }, false,
         "grupos"},
        {"Form_Usuarios", "DROP TABLE usuarios", false,
         [](QWidget* w) { QTest::mouseClick(w->findChild<QWidget*>("Boton_Siguiente"), Qt::LeftButton); }, false,
         "usuarios"},
        {"Form_IngresoJugadas", "DROP TABLE clientes", false,
         [](QWidget* w) {
             escribir(w, "Text_Bus2", "CARLOS");
             QTest::keyClick(w->findChild<QWidget*>("Text_Bus2"), Qt::Key_Return);
         },
         false, "clientes"},
        {"form_Venta_MC", "DROP TABLE macuares", false, [](QWidget* w) { QTest::keyClick(w, Qt::Key_F8); }, false,
         "macuares"},
        {"frmLogin", "DROP TABLE usuarios", false,
         [](QWidget* w) {
             escribir(w, "txtUserName", "admin");
             escribir(w, "txtPassword", "admin123");
             QTest::keyClick(w->findChild<QWidget*>("txtPassword"), Qt::Key_Return);
         },
         false, "usuarios"},
    };
    return todos;
}

}  // namespace

class TstVentanas : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    int terminados = 0;

    // A window open as its user meets it: the sign-in on its own, every
    // other one inside (or as) the main menu.
    struct Abierta {
        std::unique_ptr<frmLogin> login;
        std::unique_ptr<MenuDePrueba> menu;
        QPointer<QWidget> ventana;
        QWidget* pantalla() const { return menu ? static_cast<QWidget*>(menu->menu.get()) : login.get(); }
    };

    Abierta abrir(const Caso& c, const QSize& tamano = {1366, 768}) {
        Abierta a;
        if (c.usuario.isEmpty()) {
            a.login = std::make_unique<frmLogin>(env->ctx);
            a.login->terminar = [this] { ++terminados; };
            a.login->show();
            QApplication::setActiveWindow(a.login.get());
            a.ventana = a.login.get();
        } else {
            a.menu = std::make_unique<MenuDePrueba>(*env, c.usuario, tamano);
            a.menu->menu->terminar = [this] { ++terminados; };
            a.ventana = c.entrada.isEmpty() ? a.menu->menu.get() : a.menu->abrir(c.entrada);
        }
        return a;
    }

    QString registro() {
        QFile f(archivoRegistro(env->ctx));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }

private slots:
    void initTestCase() {
        aplicarEstilo();
        env = std::make_unique<TestEnv>("ventanas");
        env->config.carpetaLocal = carpeta.path();
        env->ctx.config.carpetaLocal = carpeta.path();
    }

    void init() {
        env->loadDemo();
        env->dialogs.clear();
        terminados = 0;
        QFile::remove(archivoRegistro(env->ctx));
    }

    void cleanup() { QVERIFY2(!env->dialogs.answersLeft(), "una respuesta preparada no se usó"); }

    void cursorYTeclasDeCierre_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<bool>("conEsc");
        for (const Caso& c : casos()) {
            QTest::newRow(qPrintable(c.nombre + " Esc")) << c.nombre << true;
            QTest::newRow(qPrintable(c.nombre + " Ctrl+F4")) << c.nombre << false;
        }
    }

    void cursorYTeclasDeCierre() {
        QFETCH(QString, ventana);
        QFETCH(bool, conEsc);
        const Caso& c = caso(ventana);
        Abierta a = abrir(c);
        QVERIFY(a.ventana);
        QCOMPARE(a.ventana->objectName(), c.nombre);
        if (!c.cursor.isEmpty()) {
            auto* campo = a.ventana->findChild<QWidget*>(c.cursor);
            QWidget* foco = QApplication::focusWidget();
            QVERIFY(campo);
            QVERIFY2(foco && (foco == campo || campo->isAncestorOf(foco)),
                     qPrintable(foco ? foco->objectName() : QString("nadie")));
        }
        const bool cierra = c.escCierra || !conEsc;
        if (cierra && c.nombre == "Form_MenuPrincipal") env->dialogs.yes();  // "Esta seguro de salir del sistema"
        pulsar(a.ventana, conEsc ? Qt::Key_Escape : Qt::Key_F4, conEsc ? Qt::NoModifier : Qt::ControlModifier);
        QApplication::processEvents();
        if (!cierra) {
            QVERIFY(a.ventana && a.ventana->isVisible());
            return;
        }
        QTRY_VERIFY(!a.ventana || !a.ventana->isVisible());
        // Closing the sign-in or the menu ends the program.
        QCOMPARE(terminados, c.entrada.isEmpty() ? 1 : 0);
        if (!c.entrada.isEmpty()) QTRY_COMPARE(a.menu->abiertas(), 0);
    }

    // Administration windows centre themselves when the setting centrarform
    // is 1; the others stay where the menu puts them.
    void centradaSegunAjuste_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<int>("centrarform");
        QTest::addColumn<bool>("centrada");
        QTest::newRow("administration, setting on") << "Form_AbrirCerrar" << 1 << true;
        QTest::newRow("administration, setting off") << "Form_AbrirCerrar" << 0 << false;
        QTest::newRow("group change") << "Form_CambiarGrupo" << 1 << false;
    }

    void centradaSegunAjuste() {
        QFETCH(QString, ventana);
        QFETCH(int, centrarform);
        QFETCH(bool, centrada);
        env->db().exec("update configuracion set centrarform=?", {centrarform});
        Abierta a = abrir(caso(ventana));
        QApplication::processEvents();
        QMdiSubWindow* marco = a.menu->menu->area()->activeSubWindow();
        QVERIFY(marco);
        // Left = screen width \ 2 - window width \ 2, kept inside the menu.
        const int libre = a.menu->menu->area()->viewport()->width() - marco->width();
        const int centro = std::clamp(marco->screen()->geometry().width() / 2 - marco->width() / 2, 0, libre);
        QVERIFY(centro > 0);
        QCOMPARE(marco->x(), centrada ? centro : 0);
    }

    void falloDeBaseDeDatos_data() {
        QTest::addColumn<int>("fallo");
        for (int i = 0; i < fallos().size(); ++i) QTest::newRow(qPrintable(fallos()[i].ventana)) << i;
    }

    void falloDeBaseDeDatos() {
        QFETCH(int, fallo);
        const Fallo& f = fallos()[fallo];
        auto otra = env->connect();
        const auto romper = [&] {
            if (!f.romper.isEmpty())
                otra->exec(f.romper.toStdString());
            else
                otra->exec("KILL ?", {env->db().scalar("SELECT CONNECTION_ID()").toLongLong()});
        };
        const Caso& c = caso(f.ventana);
        std::optional<MenuDePrueba> menu;
        if (!c.entrada.isEmpty()) menu.emplace(*env, c.usuario);
        if (f.alAbrir) romper();
        std::unique_ptr<frmLogin> login;
        QPointer<QWidget> ventana;
        if (menu) {
            ventana = menu->abrir(c.entrada);
        } else {
            login = std::make_unique<frmLogin>(env->ctx);
            login->alAceptar = [] {};
            login->show();
            ventana = login.get();
        }
        QVERIFY(ventana);
        if (!f.alAbrir) romper();
        f.comando(ventana);

        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        QCOMPARE(env->dialogs.last().title, f.conexion ? kTituloConexion : kTituloErrorBD);
        QCOMPARE(env->dialogs.last().text, f.conexion ? kMensajeConexion : kMensajeErrorBD);
        const QString log = registro();
        QVERIFY2(log.contains(" | " + c.nombre + " | "), qPrintable(log));
        QVERIFY2(log.contains(f.enRegistro), qPrintable(log));
        QCOMPARE(log.count('\n'), 1);
    }

    // Pictures of every window at the booths' screen sizes, inside the menu
    // as the program shows them.
    void retratos_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<QSize>("tamano");
        for (const Caso& c : casos())
            for (const QSize t : {QSize(1366, 768), QSize(1024, 768)})
                QTest::newRow(qPrintable(QString("%1 %2x%3").arg(c.nombre).arg(t.width()).arg(t.height())))
                    << c.nombre << t;
    }

    void retratos() {
        QFETCH(QString, ventana);
        QFETCH(QSize, tamano);
        Abierta a = abrir(caso(ventana), tamano);
        QVERIFY(a.ventana);
        QApplication::processEvents();
        const QString archivo =
            grab(a.pantalla(), QString("%1_%2x%3").arg(ventana).arg(tamano.width()).arg(tamano.height()));
        QVERIFY(QFile::exists(archivo));
        if (a.menu && a.ventana != a.menu->menu.get()) {
            // The window fits the menu's area at its smallest.
            const QSize area = a.menu->menu->area()->viewport()->size();
            const QSize minimo = a.ventana->minimumSizeHint();
            QVERIFY2(minimo.width() <= area.width() && minimo.height() <= area.height(),
                     qPrintable(QString("%1x%2").arg(minimo.width()).arg(minimo.height())));
        }
    }

    // Each window opens inside the menu's area, at both screen sizes and
    // whether it centres itself or not.
    void abreDentroDelArea_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<QSize>("tamano");
        QTest::addColumn<int>("centrarform");
        for (const Caso& c : casos())
            if (!c.entrada.isEmpty())
                for (const QSize t : {QSize(1366, 768), QSize(1024, 768)})
                    for (int centrar : {0, 1})
                        QTest::newRow(qPrintable(QString("%1 %2x%3 centrarform %4")
                                                     .arg(c.nombre)
                                                     .arg(t.width())
                                                     .arg(t.height())
                                                     .arg(centrar)))
                            << c.nombre << t << centrar;
    }
    void abreDentroDelArea() {
        QFETCH(QString, ventana);
        QFETCH(QSize, tamano);
        QFETCH(int, centrarform);
        env->db().exec("update configuracion set centrarform=?", {centrarform});
        Abierta a = abrir(caso(ventana), tamano);
        QApplication::processEvents();
        QMdiSubWindow* marco = a.menu->menu->area()->activeSubWindow();
        QVERIFY(marco);
        const QRect area = a.menu->menu->area()->viewport()->rect();
        QVERIFY2(area.contains(marco->geometry()),
                 qPrintable(QString("%1,%2 %3x%4 fuera de %5x%6")
                                .arg(marco->x())
                                .arg(marco->y())
                                .arg(marco->width())
                                .arg(marco->height())
                                .arg(area.width())
                                .arg(area.height())));
    }

    // On a 1024x768 screen every part of every window is in sight: no widget
    // reaches past its window's edges (the booth needs no scrolling).
    void nadaRecortadoA1024() {
        for (const Caso& c : casos()) {
            if (c.entrada.isEmpty()) continue;
            init();
            Abierta a = abrir(c, {1024, 768});
            QVERIFY(a.ventana);
            QApplication::processEvents();
            QStringList fuera;
            const QRect marco = a.ventana->rect();
            for (QWidget* w : a.ventana->findChildren<QWidget*>()) {
                if (w->isWindow() || !w->isVisibleTo(a.ventana)) continue;
                // Inside a scrolling area its own bars show what is hidden.
                bool enDesplazable = false;
                for (QWidget* p = w->parentWidget(); p && p != a.ventana; p = p->parentWidget())
                    if (qobject_cast<QAbstractScrollArea*>(p)) enDesplazable = true;
                if (enDesplazable) continue;
                const QRect r(w->mapTo(a.ventana, QPoint(0, 0)), w->size());
                if (!marco.contains(r))
                    fuera << QString("%1 (%2) %3,%4 %5x%6")
                                 .arg(w->objectName(), w->metaObject()->className())
                                 .arg(r.x())
                                 .arg(r.y())
                                 .arg(r.width())
                                 .arg(r.height());
            }
            QVERIFY2(fuera.isEmpty(), qPrintable(c.nombre + ": " + fuera.join("; ")));
            cerrarDialogos(env->dialogs);
        }
    }

    // A window keeps its own size when a bigger one (the booth, which fills
    // the area) closes over it.
    void recuperaSuTamano() {
        Abierta a = abrir(caso("Form_ConfImpresion"), {1024, 768});
        QMdiSubWindow* ajustes = a.menu->menu->area()->activeSubWindow();
        const QSize tamano = ajustes->size();
        QVERIFY(!ajustes->isMaximized());
        QWidget* venta = a.menu->abrir("vg_menu");
        QMdiSubWindow* marcoVenta = a.menu->menu->area()->activeSubWindow();
        QCOMPARE(marcoVenta->widget(), venta);
        QVERIFY(marcoVenta->isMaximized());
        pulsar(venta, Qt::Key_F4, Qt::ControlModifier);
        QTRY_COMPARE(a.menu->abiertas(), 1);
        QCOMPARE(a.menu->menu->area()->activeSubWindow(), ajustes);
        QVERIFY(!ajustes->isMaximized());
        QCOMPARE(ajustes->size(), tamano);
    }

    // Inside the menu the booth's keys are the booth's: F6 opens its list of
    // the day's tickets, F8 asks for a ticket to void, Esc closes the list.
    void teclasDeLaTaquillaDentroDelMenu() {
        Abierta a = abrir(caso("Form_Venta_WIN"), {1024, 768});
        pulsar(a.ventana, Qt::Key_F6);
        QWidget* lista = a.ventana->findChild<QWidget*>("Form_BoletosTaquilla");
        QVERIFY(lista && lista->isVisible());
        QApplication::setActiveWindow(lista);
        pulsar(lista, Qt::Key_Escape);
        QVERIFY(!lista->isVisible());
        QApplication::setActiveWindow(a.menu->menu.get());
        a.ventana->findChild<QWidget*>("Text_Caballo")->setFocus();
        env->dialogs.cancel();
        pulsar(a.ventana, Qt::Key_F8);
        QCOMPARE(env->dialogs.last().text, QString("INGRESE EL CODIGO DEL BOLETO"));
    }

    // Qt's own translations: the standard buttons of every box speak Spanish.
    void botonesEstandarEnEspanol() {
        QVERIFY(cargarTraducciones());
        QMessageBox caja(QMessageBox::Question, "t", "x",
                         QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes | QMessageBox::No);
        QStringList textos;
        for (auto b : {QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Yes, QMessageBox::No})
            textos << caja.button(b)->text().remove('&');
        QCOMPARE(textos, (QStringList{"Aceptar", "Cancelar", "Sí", "No"}));
        QInputDialog entrada;
        entrada.show();
        QStringList botones;
        for (QPushButton* b : entrada.findChildren<QPushButton*>()) botones << b->text().remove('&');
        botones.sort();
        QCOMPARE(botones, (QStringList{"Aceptar", "Cancelar"}));
    }

    void filtrosDeTecladoEnUnaCaja() {
        QLineEdit monto;
        KeyFilter::install(&monto, SoloNumerosComa);
        QTest::keyClicks(&monto, "12.5a,3");
        QCOMPARE(monto.text(), QString("125,3"));
        QTest::keyClick(&monto, Qt::Key_Backspace);
        QCOMPARE(monto.text(), QString("125,"));
        // Keys that type nothing are not the filter's: Delete deletes, Esc
        // goes on to the window.
        QTest::keyClick(&monto, Qt::Key_Home);
        QTest::sendKeyEvent(QTest::Press, &monto, Qt::Key_Delete, QChar(0x7f), Qt::NoModifier);
        QCOMPARE(monto.text(), QString("25,"));
        QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(QChar(0x1b)));
        QApplication::sendEvent(&monto, &esc);
        QVERIFY(!esc.isAccepted());

        QLineEdit nombre;
        KeyFilter::install(&nombre, Mayusculas);
        QTest::keyClicks(&nombre, "ana mar");
        QTest::sendKeyEvent(QTest::Press, &nombre, Qt::Key_unknown, QString::fromUtf8("í"), Qt::NoModifier);
        QTest::keyClicks(&nombre, "a");
        QCOMPARE(nombre.text(), QString::fromUtf8("ANA MARÍA"));
    }
};

QTEST_MAIN(TstVentanas)
#include "tst_ventanas.moc"
