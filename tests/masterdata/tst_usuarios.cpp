// The users window's logic over the demo day: every check of Guardar and
// modificar in its order with its exact text, passwords in the configured
// form that the sign-in then accepts, Eliminar, the centre commands and the
// listings of each level.
#include "core/Cipher.h"
#include "core/Claves.h"
#include "core/Textos.h"
#include "masterdata/Usuarios.h"
#include "signin/Login.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

namespace {

// A user's fields as the window sends them, with the changes "columna=valor".
ValoresCampos campos(const QStringList& cambios) {
    ValoresCampos v{{"usuario", "nuevo1"},  {"clave", "clave1"},  {"nombre", "USUARIO NUEVO"},
                    {"nivel", "Taquilla"},  {"grupo", "07"},      {"estatus", "Activo"},
                    {"fecha_ingreso", "23-11-2026"}};
    for (const QString& c : cambios) v[c.section('=', 0, 0)] = c.section('=', 1);
    return v;
}

QStringList usuariosDe(const Recordset& rs) {
    QStringList out;
    for (const Row& r : rs) out << r.text("usuario");
    out.sort();
    return out;
}

}  // namespace

class TstUsuarios : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    void entrar(const QString& usuario) {
        env->signIn(usuario);
        env->dialogs.clear();
    }

private slots:
    void initTestCase() { env = std::make_unique<TestEnv>("usuarios"); }

    void init() {
        env->loadDemo();
        entrar("admin");
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    // Each check of Guardar, in order: the first that fails is the one told,
    // and nothing is written.
    void guardar_data() {
        QTest::addColumn<QString>("quien");
        QTest::addColumn<QStringList>("cambios");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("texto");

        const QString amarillo = texto::TituloInformacionSistema;
        const QString valida = texto::TituloVerifiqueIntente;
        const QString guardado = kTituloRegistros;
        QTest::newRow("empty user name") << "admin" << QStringList{"usuario="} << amarillo << kLlenarAmarillos;
        QTest::newRow("empty password") << "admin" << QStringList{"clave="} << amarillo << kLlenarAmarillos;
        QTest::newRow("blank name") << "admin" << QStringList{"nombre=   "} << amarillo << kLlenarAmarillos;
        QTest::newRow("empty group") << "admin" << QStringList{"grupo="} << amarillo << kLlenarAmarillos;
        QTest::newRow("yellow before duplicate")
            << "admin" << QStringList{"usuario=admin", "nombre="} << amarillo << kLlenarAmarillos;
        QTest::newRow("level outside the list") << "admin" << QStringList{"nivel=Jefe"} << valida
                                                << "EL CAMPO NIVEL NO ES UNA OPCION DE LA LISTA";
        QTest::newRow("group of another centre, by a manager")
            << "gerente" << QStringList{"grupo=12"} << valida << "EL CAMPO GRUPO NO ES UNA OPCION DE LA LISTA";
        QTest::newRow("a date that is not a date") << "admin" << QStringList{"fecha_ingreso=31-02-2026"} << valida
                                                   << "EL CAMPO FECHA DE INGRESO NO ES UNA FECHA VALIDA (DD-MM-AAAA)";
        QTest::newRow("name too long") << "admin" << QStringList{"nombre=" + QString(101, 'A')} << valida
                                       << "EL CAMPO NOMBRE ES DEMASIADO LARGO: MAXIMO 100 CARACTERES";
        QTest::newRow("duplicate in another case")
            << "admin" << QStringList{"usuario=TAQUILLA1"} << kTituloInformacion << kUsuarioYaExiste;
        QTest::newRow("duplicate before the level")
            << "gerente" << QStringList{"usuario=taquilla1", "nivel=Administrador"} << kTituloInformacion
            << kUsuarioYaExiste;
        QTest::newRow("administrator by a manager")
            << "gerente" << QStringList{"nivel=Administrador"} << kTituloDenegada << kNivelDenegado;
        QTest::newRow("hidden administrator by a manager")
            << "gerente" << QStringList{"nivel=Administrador Oculto"} << kTituloDenegada << kNivelDenegado;
        QTest::newRow("administrator by an administrator")
            << "admin" << QStringList{"nivel=Administrador"} << guardado << texto::DatosAlmacenados;
        QTest::newRow("booth user by a manager") << "gerente" << QStringList{} << guardado << texto::DatosAlmacenados;
        QTest::newRow("quotes and accents stored as typed")
            << "admin" << QStringList{"usuario=o'brien", "nombre=JOSÉ \"PEPE\" O'BRIEN ÑÁÉÍÓÚ"} << guardado
            << texto::DatosAlmacenados;
    }

    void guardar() {
        QFETCH(QString, quien);
        QFETCH(QStringList, cambios);
        QFETCH(QString, titulo);
        QFETCH(QString, texto);
        entrar(quien);
        Db& db = env->db();
        const QStringList antes = foto(db, {"usuarios"});
        Usuarios u(env->ctx);
        const ValoresCampos v = campos(cambios);
        u.nuevo();
        const bool hecho = u.guardar(v);

        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, titulo);
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(env->dialogs.last().icon, hecho ? Icon::Information : Icon::Critical);
        QCOMPARE(hecho, texto == texto::DatosAlmacenados);
        if (!hecho) {
            QCOMPARE(foto(db, {"usuarios"}), antes);
            return;
        }
        const Row r = db.query("select * from usuarios where usuario = ?", {v["usuario"]}).first();
        QCOMPARE(r.text("nombre"), v["nombre"]);
        QCOMPARE(r.text("nivel"), v["nivel"]);
        QCOMPARE(r.text("grupo"), v["grupo"]);
        QCOMPARE(r.text("ch"), QString("LOS PINOS"));
        QCOMPARE(r.text("fecha_ingreso"), QString("2026-11-23"));
        QCOMPARE(r.text("estatus"), QString("Activo"));
        QCOMPARE(r.text("mac"), QString());
        QVERIFY(claveCorrecta(r.text("clave"), v["clave"]));
        QCOMPARE(u.claveActual(), v["usuario"]);
    }

    // modificar: the same checks on the record read; the key never changes;
    // an empty password keeps the stored one.
    void modificar_data() {
        QTest::addColumn<QString>("quien");
        QTest::addColumn<QString>("preparar");
        QTest::addColumn<QStringList>("cambios");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("texto");
        const QString nada;
        QTest::newRow("blank name") << "admin" << nada << QStringList{"nombre="} << texto::TituloInformacionSistema
                                    << kLlenarAmarillos;
        QTest::newRow("a name left as it was in another case")
            << "admin" << "INSERT INTO usuarios (usuario, nivel, grupo) VALUES ('TAQUILLA1', 'Taquilla', '07')"
            << QStringList{} << kTituloInformacion << kUsuarioYaExiste;
        QTest::newRow("manager raises a booth to administrator")
            << "gerente" << nada << QStringList{"nivel=Administrador"} << kTituloDenegada << kNivelDenegado;
        QTest::newRow("bad date") << "admin" << nada << QStringList{"fecha_ingreso=2026-11-23"}
                                  << texto::TituloVerifiqueIntente
                                  << "EL CAMPO FECHA DE INGRESO NO ES UNA FECHA VALIDA (DD-MM-AAAA)";
        QTest::newRow("every field, the name too") << "admin" << nada
                                                   << QStringList{"usuario=otro", "nombre=TAQUILLA UNO", "nivel=Total",
                                                                  "grupo=12", "estatus=Baja", "fecha_ingreso=01-10-2026"}
                                                   << kTituloRegistros << kDatosModificados;
        QTest::newRow("by a manager") << "gerente" << nada << QStringList{"nombre=CAJERA"} << kTituloRegistros
                                      << kDatosModificados;
    }

    void modificar() {
        QFETCH(QString, quien);
        QFETCH(QString, preparar);
        QFETCH(QStringList, cambios);
        QFETCH(QString, titulo);
        QFETCH(QString, texto);
        Db& db = env->db();
        if (!preparar.isEmpty()) db.exec(preparar.toStdString());
        entrar(quien);
        const QString claveAntes = textOf(db, "select clave from usuarios where usuario = 'taquilla1' and nivel <> ''"
                                              " order by id_usuario limit 1");
        const QStringList antes = foto(db, {"usuarios"});
        Usuarios u(env->ctx);
        auto v = u.leer("taquilla1");
        QVERIFY(v);
        QCOMPARE((*v)["clave"], QString());  // a password is never shown
        for (const QString& c : cambios) (*v)[c.section('=', 0, 0)] = c.section('=', 1);
        const bool hecho = u.modificar(*v);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, titulo);
        QCOMPARE(env->dialogs.last().text, texto);
        if (!hecho) {
            QCOMPARE(foto(db, {"usuarios"}), antes);
            return;
        }
        const Row r = db.query("select * from usuarios where id_usuario = 11").first();
        QCOMPARE(r.text("usuario"), QString("taquilla1"));
        QCOMPARE(r.text("clave"), claveAntes);
        QCOMPARE(r.text("nombre"), (*v)["nombre"]);
        if (cambios.contains("grupo=12")) {
            QCOMPARE(r.text("ch"), QString("MARACAY"));
            QCOMPARE(r.text("estatus"), QString("Baja"));
            QCOMPARE(r.text("fecha_ingreso"), QString("2026-10-01"));
            QCOMPARE(r.text("nivel"), QString("Total"));
        }
        QCOMPARE(contar(db, "usuarios"), 14LL + (preparar.isEmpty() ? 0 : 1));
    }

    // A user created or given a new password signs in at once with it, in
    // the form the configuration asks for; a deactivated one is refused.
    void entraConSuClave_data() {
        QTest::addColumn<int>("claveSegura");
        QTest::newRow("cipher") << 0;
        QTest::newRow("Argon2id") << 1;
    }

    void entraConSuClave() {
        QFETCH(int, claveSegura);
        Db& db = env->db();
        db.exec("update configuracion set clave_segura = ?", {claveSegura});
        entrar("admin");
        Usuarios u(env->ctx);
        u.nuevo();
        QVERIFY(u.guardar(campos({"usuario=cajero9", "clave=Ñandú 9"})));
        env->dialogs.clear();
        const QString guardada = textOf(db, "select clave from usuarios where usuario='cajero9'");
        if (claveSegura == 1) {
            QVERIFY(guardada.startsWith("$argon2id$"));
            QVERIFY(guardada.size() <= 100);
        } else {
            QCOMPARE(Desencriptar(guardada, kClaveMaestra), QString("Ñandú 9"));
        }

        Login login(env->ctx);
        QCOMPARE(login.IniciarSesion("cajero9", "Ñandú 9"), Login::Resultado::Aceptado);
        QCOMPARE(login.IniciarSesion("cajero9", "ñandú 9"), Login::Resultado::ClaveInvalida);
        env->dialogs.clear();

        // A new password replaces it; then the account is deactivated.
        entrar("admin");
        auto v = u.leer("cajero9");
        QVERIFY(v);
        (*v)["clave"] = "otra-clave";
        QVERIFY(u.modificar(*v));
        QCOMPARE(login.IniciarSesion("cajero9", "Ñandú 9"), Login::Resultado::ClaveInvalida);
        QCOMPARE(login.IniciarSesion("cajero9", "otra-clave"), Login::Resultado::Aceptado);
        entrar("admin");
        v = u.leer("cajero9");
        (*v)["estatus"] = "Baja";
        QVERIFY(u.modificar(*v));
        env->dialogs.clear();
        QCOMPARE(login.IniciarSesion("cajero9", "otra-clave"), Login::Resultado::CuentaSuspendida);
        QCOMPARE(env->dialogs.last().text, kCuentaSuspendida);
        env->dialogs.clear();
    }

    void eliminar() {
        Db& db = env->db();
        Usuarios u(env->ctx);
        // Nothing chosen, then the own user: refused without a question.
        QVERIFY(!u.eliminar());
        QCOMPARE(env->dialogs.last().text, kSeleccioneRegistro);
        QVERIFY(u.leer("ADMIN"));
        QVERIFY(!u.eliminar());
        QCOMPARE(env->dialogs.last().text, kUsuarioPropio);
        // Declined: nothing goes.
        QVERIFY(u.leer("taquilla3"));
        env->dialogs.no();
        QVERIFY(!u.eliminar());
        QCOMPARE(contar(db, "usuarios"), 14LL);
        env->dialogs.yes();
        QVERIFY(u.eliminar());
        QCOMPARE(env->dialogs.shown()[env->dialogs.count() - 2].title, texto::TituloConfirmar);
        QCOMPARE(env->dialogs.last().title, kTituloRegistros);
        QCOMPARE(env->dialogs.last().text, kRegistroEliminado);
        QCOMPARE(numberOf(db, "select count(*) from usuarios where usuario='taquilla3'"), 0.0);
        QCOMPARE(contar(db, "usuarios"), 13LL);
        QVERIFY(!u.hayRegistro());
        // A manager cannot delete an administrator.
        entrar("gerente");
        Usuarios g(env->ctx);
        QVERIFY(g.leer("admin"));
        QVERIFY(!g.eliminar());
        QCOMPARE(env->dialogs.last().text, kNivelDenegado);
        QCOMPARE(contar(db, "usuarios"), 13LL);
    }

    // Deactivate, activate and release change every user of every group of
    // the centre, administrators included, and nobody else.
    void comandosDelCentro_data() {
        QTest::addColumn<int>("comando");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("despues");  // the users of the centre afterwards
        QTest::newRow("deactivate") << 0 << kTituloUsuarios << "Baja|AA:BB";
        QTest::newRow("activate") << 1 << kTituloUsuarios << "Activo|AA:BB";
        QTest::newRow("release") << 2 << kTituloLimpieza << "Baja|";
    }

    void comandosDelCentro() {
        QFETCH(int, comando);
        QFETCH(QString, titulo);
        QFETCH(QString, despues);
        Db& db = env->db();
        db.exec("update usuarios set estatus='Baja', mac='AA:BB', ip_pc='1.2.3.4'");
        const QStringList maracay =
            foto(db, {"grupos"}) + QStringList{textOf(db, "select group_concat(concat_ws('|', usuario, estatus, mac, "
                                                          "ip_pc) order by usuario) from usuarios where ch='MARACAY'")};
        Usuarios u(env->ctx);
        env->dialogs.yes();
        const bool hecho = comando == 0   ? u.desactivarCentro("LOS PINOS")
                           : comando == 1 ? u.activarCentro("LOS PINOS")
                                          : u.liberarEquipos("LOS PINOS");
        QVERIFY(hecho);
        QCOMPARE(env->dialogs.count(), 2);
        QCOMPARE(env->dialogs.shown()[0].title, titulo);
        QCOMPARE(env->dialogs.last().title, titulo);
        QCOMPARE(env->dialogs.last().text, texto::CambiosRealizados);
        const Recordset pinos = db.query("select estatus, mac from usuarios where grupo in ('07','08')");
        QCOMPARE(pinos.size(), 12);
        for (const Row& r : pinos) QCOMPARE(r.text("estatus") + "|" + r.text("mac"), despues);
        QCOMPARE(foto(db, {"grupos"}) +
                     QStringList{textOf(db, "select group_concat(concat_ws('|', usuario, estatus, mac, ip_pc) order "
                                            "by usuario) from usuarios where ch='MARACAY'")},
                 maracay);
    }

    void comandosDelCentroRehusados() {
        Db& db = env->db();
        const QStringList antes = foto(db, {"usuarios"});
        Usuarios admin(env->ctx);
        QVERIFY(!admin.desactivarCentro(texto::Todos));
        QCOMPARE(env->dialogs.last().text, kSeleccioneCentro);
        env->dialogs.no();
        QVERIFY(!admin.desactivarCentro("MARACAY"));
        entrar("gerente");
        Usuarios gerente(env->ctx);
        QVERIFY(!gerente.manejaCentros());
        QVERIFY(!gerente.liberarEquipos("LOS PINOS"));
        QCOMPARE(env->dialogs.last().text, texto::SinAcceso);
        QCOMPARE(foto(db, {"usuarios"}), antes);
    }

    // Which users each level lists: the hidden administrators (under both
    // spellings) only for themselves.
    void listados_data() {
        QTest::addColumn<QString>("quien");
        QTest::addColumn<QString>("filtro");
        QTest::addColumn<QString>("buscar");  // a group typed in Buscar instead of the filter
        QTest::addColumn<QStringList>("usuarios");
        const QStringList pinos07{"admin", "gerente", "oculto", "ocultoO", "socio", "supervisor", "taquilla1"};
        const QStringList pinos08{"admintf", "remate", "suptf", "tablafija", "taquilla2", "total"};
        auto sin = [](QStringList l, const QStringList& fuera) {
            for (const QString& f : fuera) l.removeAll(f);
            l.sort();
            return l;
        };
        const QStringList todos = pinos07 + pinos08 + QStringList{"taquilla3", "taquilla4"};
        QTest::newRow("hidden administrator, all") << "oculto" << "TODOS" << "" << sin(todos, {});
        QTest::newRow("administrator, all") << "admin" << "TODOS" << "" << sin(todos, {"oculto", "ocultoO"});
        QTest::newRow("hidden administrator, a centre") << "oculto" << "LOS PINOS" << "" << sin(pinos07 + pinos08, {});
        QTest::newRow("administrator, a centre")
            << "admin" << "LOS PINOS" << "" << sin(pinos07 + pinos08, {"oculto", "ocultoO"});
        QTest::newRow("administrator, another centre") << "admin" << "MARACAY" << "" << QStringList{"taquilla3", "taquilla4"};
        QTest::newRow("partner, a centre")
            << "socio" << "LOS PINOS" << "" << sin(pinos07 + pinos08, {"oculto", "ocultoO", "supervisor"});
        QTest::newRow("manager, all") << "gerente" << "TODOS" << ""
                                      << sin(pinos07, {"oculto", "ocultoO", "admin"});
        QTest::newRow("manager, his centre") << "gerente" << "LOS PINOS" << ""
                                             << sin(pinos07, {"oculto", "ocultoO", "admin"});
        QTest::newRow("administrator searches a group") << "admin" << "" << "07" << sin(pinos07, {"oculto", "ocultoO"});
        QTest::newRow("hidden administrator searches a group") << "oculto" << "" << "07" << sin(pinos07, {});
        QTest::newRow("manager searches another group") << "gerente" << "" << "08" << QStringList{};
    }

    void listados() {
        QFETCH(QString, quien);
        QFETCH(QString, filtro);
        QFETCH(QString, buscar);
        QFETCH(QStringList, usuarios);
        env->db().exec("INSERT INTO usuarios (usuario, nivel, grupo, ch) VALUES ('ocultoO', 'Administrador O', '07', "
                       "'LOS PINOS')");
        entrar(quien);
        Usuarios u(env->ctx);
        std::optional<Recordset> filas;
        if (buscar.isEmpty()) {
            QVERIFY(u.filtros().contains(filtro));
            filas = u.listar(filtro);
        } else {
            env->dialogs.type(buscar);
            filas = u.buscar();
        }
        if (usuarios.isEmpty()) {
            QVERIFY(!filas);
            QCOMPARE(env->dialogs.last().text, texto::SinRegistros);
            return;
        }
        QVERIFY(filas);
        QCOMPARE(usuariosDe(*filas), usuarios);
    }

    void filtrosPorNivel() {
        Usuarios admin(env->ctx);
        QCOMPARE(admin.filtros(), (QStringList{"TODOS", "LOS PINOS", "MARACAY"}));
        QCOMPARE(admin.opciones("grupo"), (QStringList{"07", "08", "12", "15"}));
        entrar("gerente");
        Usuarios gerente(env->ctx);
        QCOMPARE(gerente.filtros(), (QStringList{"TODOS", "LOS PINOS"}));
        QCOMPARE(gerente.opciones("grupo"), QStringList{"07"});
        QCOMPARE(gerente.opciones("nivel"), Usuarios::nivelesOfrecidos());
    }
};

QTEST_GUILESS_MAIN(TstUsuarios)
#include "tst_usuarios.moc"
