// The betting-centres window over the demo day: every check of Guardar in
// its order, modificar of every field, listings and Buscar, the delete that
// takes the centre's rules and limits with it (all or nothing), the transfer
// to the betting-centre server, and the window itself driven through the
// master-data pattern.
#include "core/Connections.h"
#include "core/Textos.h"
#include "gui/Estilo.h"
#include "gui/RecordsetModel.h"
#include "masterdata/Form_Hipicos.h"
#include "masterdata/Form_Usuarios.h"
#include "masterdata/TablasDeNombres.h"
#include "schema/SchemaLoader.h"
#include "support/TestEnv.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

namespace {

ValoresCampos grupoNuevo(const QStringList& cambios) {
    ValoresCampos v{{"grupo", "20"},
                    {"ch", "NUEVO CENTRO"},
                    {"subgrupo", "S1"},
                    {"contacto", "ROSA DÍAZ"},
                    {"telefono", "0212-5551234"},
                    {"fecha_ingreso", "23-11-2026"},
                    {"fecha_salida", ""},
                    {"name_empresa", "AGENCIA 20"},
                    {"rif_empresa", "J-1"},
                    {"direccion_empresa", "CALLE 1"},
                    {"correo", "a@b.c"},
                    {"encargado", "LUIS"},
                    {"telefono_enc", "0414"},
                    {"ganadores", "1"},
                    {"tablafija", "0"},
                    {"macuare", "1"},
                    {"subastas", "2"},
                    {"ticket_cobro", "1"},
                    {"cupoviptf", "50"},
                    {"por_ch", "40,5"},
                    {"por_casa", "40"},
                    {"por_admin", "19,5"},
                    {"por_remate", "20"},
                    {"por_rematador", "5"},
                    {"tablazo", "50"},
                    {"tablaz1", "10"},
                    {"tablaz2", "10"},
                    {"tablaz3", "0"},
                    {"tablaz4", "0"}};
    for (const QString& c : cambios) v[c.section('=', 0, 0)] = c.section('=', 1);
    return v;
}

QStringList gruposDe(const Recordset& rs) {
    QStringList out;
    for (const Row& r : rs) out << r.text("grupo");
    return out;
}

const std::initializer_list<const char*> kCentro = {"grupos", "usuarios", "dividendos", "venta_cupo_ganadores",
                                                    "venta_cupo_tf"};

}  // namespace

class TstHipicos : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

private slots:
    void initTestCase() {
        aplicarEstilo();
        env = std::make_unique<TestEnv>("hipicos");
    }

    void init() {
        env->loadDemo();
        env->signIn("admin");
        env->dialogs.clear();
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    void guardar_data() {
        QTest::addColumn<QStringList>("cambios");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("texto");
        const QString amarillo = texto::TituloInformacionSistema;
        const QString valida = texto::TituloVerifiqueIntente;
        QTest::newRow("empty initials") << QStringList{"grupo="} << amarillo << kLlenarAmarillos;
        QTest::newRow("empty centre") << QStringList{"ch= "} << amarillo << kLlenarAmarillos;
        QTest::newRow("empty contact, wrong percentage")
            << QStringList{"contacto=", "por_ch=abc"} << amarillo << kLlenarAmarillos;
        QTest::newRow("percentage not a number") << QStringList{"por_ch=abc"} << valida
                                                 << "EL CAMPO PORCENTAJE DEL CENTRO NO ES VALIDO: DEBE SER UN NUMERO "
                                                    "ENTRE 0 Y 100";
        QTest::newRow("percentage above 100") << QStringList{"por_casa=100,5"} << valida
                                              << "EL CAMPO PORCENTAJE DE LA CASA NO ES VALIDO: DEBE SER UN NUMERO "
                                                 "ENTRE 0 Y 100";
        QTest::newRow("negative percentage") << QStringList{"por_admin=-1"} << valida
                                             << "EL CAMPO PORCENTAJE DEL ADMINISTRADOR NO ES VALIDO: DEBE SER UN "
                                                "NUMERO ENTRE 0 Y 100";
        QTest::newRow("joining date not a date") << QStringList{"fecha_ingreso=32-01-2026"} << valida
                                                 << "EL CAMPO FECHA DE INGRESO NO ES UNA FECHA VALIDA (DD-MM-AAAA)";
        QTest::newRow("leaving date not a date") << QStringList{"fecha_salida=ayer"} << valida
                                                 << "EL CAMPO FECHA DE SALIDA NO ES UNA FECHA VALIDA (DD-MM-AAAA)";
        QTest::newRow("subgroup outside the list") << QStringList{"subgrupo=S9"} << valida
                                                   << "EL CAMPO SUBGRUPO NO ES UNA OPCION DE LA LISTA";
        QTest::newRow("initials too long") << QStringList{"grupo=12345678901"} << valida
                                           << "EL CAMPO INICIALES DEL GRUPO ES DEMASIADO LARGO: MAXIMO 10 CARACTERES";
        QTest::newRow("initials already used") << QStringList{"grupo=07"} << kTituloInformacion << kGrupoYaExiste;
        QTest::newRow("a new group") << QStringList{} << kTituloRegistros << texto::DatosAlmacenados;
        QTest::newRow("no subgroup is N/A") << QStringList{"subgrupo="} << kTituloRegistros << texto::DatosAlmacenados;
        QTest::newRow("quotes and accents as typed")
            << QStringList{"ch=EL TRÉBOL D'ORO", "contacto=JOSÉ \"PEPE\" ÑÁÑEZ"} << kTituloRegistros
            << texto::DatosAlmacenados;
    }

    void guardar() {
        QFETCH(QStringList, cambios);
        QFETCH(QString, titulo);
        QFETCH(QString, texto);
        Db& db = env->db();
        const QStringList antes = foto(db, {"grupos"});
        Hipicos h(env->ctx);
        const ValoresCampos v = grupoNuevo(cambios);
        h.nuevo();
        const bool hecho = h.guardar(v);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, titulo);
        QCOMPARE(env->dialogs.last().text, texto);
        if (!hecho) {
            QCOMPARE(foto(db, {"grupos"}), antes);
            return;
        }
        const Row g = db.query("select * from grupos where grupo='20'").first();
        QCOMPARE(g.text("ch"), v["ch"]);
        QCOMPARE(g.text("contacto"), v["contacto"]);
        QCOMPARE(g.text("subgrupo"), v["subgrupo"].isEmpty() ? QString("N/A") : v["subgrupo"]);
        QCOMPARE(g.text("fecha_ingreso"), QString("2026-11-23"));
        QCOMPARE(g.text("fecha_salida"), QString());
        QCOMPARE(g.number("por_ch"), 40.5);
        QCOMPARE(g.number("por_admin"), 19.5);
        QCOMPARE(g.integer("macuare"), 1LL);
        QCOMPARE(g.integer("tablafija"), 0LL);
        QCOMPARE(g.integer("subastas"), 2LL);
        QCOMPARE(g.text("estatus"), QString("Activo"));
    }

    // modificar writes every field of the record read, never its initials.
    void modificarTodosLosCampos() {
        Db& db = env->db();
        Hipicos h(env->ctx);
        auto v = h.leer("12");
        QVERIFY(v);
        QCOMPARE((*v)["fecha_ingreso"], QString("23-11-2026"));
        ValoresCampos nuevos = grupoNuevo({"grupo=99", "subgrupo=", "fecha_salida=30-11-2026", "tablafija=1",
                                           "ganadores=0"});
        QVERIFY(h.modificar(nuevos));
        QCOMPARE(env->dialogs.last().text, kDatosModificados);
        QCOMPARE(numberOf(db, "select count(*) from grupos where grupo='99'"), 0.0);
        const Row g = db.query("select * from grupos where grupo='12'").first();
        nuevos.remove("grupo");
        nuevos["subgrupo"] = "N/A";
        const ValoresCampos escritos = valoresDe(g, Hipicos::descripcionHipicos().campos);
        for (auto it = nuevos.cbegin(); it != nuevos.cend(); ++it) QCOMPARE(escritos.value(it.key()), it.value());
        QCOMPARE(g.text("fecha_salida"), QString("2026-11-30"));
    }

    void listados_data() {
        QTest::addColumn<QString>("filtro");
        QTest::addColumn<QString>("buscar");
        QTest::addColumn<QStringList>("grupos");
        QTest::newRow("all") << "TODOS" << "" << QStringList{"07", "08", "12", "15"};
        QTest::newRow("a subgroup") << "ORIENTE" << "" << QStringList{"07", "08"};
        QTest::newRow("part of a subgroup's name") << "CCID" << "" << QStringList{"12", "15"};
        QTest::newRow("a percent sign is a character") << "%" << "" << QStringList{};
        QTest::newRow("search by contact") << "" << "maria" << QStringList{"08"};
        QTest::newRow("search by centre") << "" << "MARACAY" << QStringList{"12", "15"};
        QTest::newRow("search by phone") << "" << "0243" << QStringList{};
        QTest::newRow("search by another contact") << "" << "ana" << QStringList{"15"};
        QTest::newRow("search by initials") << "" << "08" << QStringList{"08"};
        QTest::newRow("search for an underscore") << "" << "_" << QStringList{};
    }

    void listados() {
        QFETCH(QString, filtro);
        QFETCH(QString, buscar);
        QFETCH(QStringList, grupos);
        Hipicos h(env->ctx);
        QCOMPARE(h.filtros(), (QStringList{"TODOS", "OCCIDENTE", "ORIENTE"}));
        if (buscar.isEmpty()) {
            const auto filas = h.listar(filtro);
            QVERIFY(filas);
            QCOMPARE(gruposDe(*filas), grupos);
            return;
        }
        env->dialogs.type(buscar);
        const auto filas = h.buscar();
        QCOMPARE(env->dialogs.shown()[0].title, kTituloBuscar);
        QCOMPARE(env->dialogs.shown()[0].text, QString("Ingrese el nombre de la grupo  a buscar "));
        if (grupos.isEmpty()) {
            QVERIFY(!filas);
            QCOMPARE(env->dialogs.last().title, texto::TituloBusqueda);
            QCOMPARE(env->dialogs.last().text, kGrupoNoExiste);
            return;
        }
        QVERIFY(filas);
        QCOMPARE(gruposDe(*filas), grupos);
    }

    // Deleting a group deletes its users, and the rules and limits of its
    // whole centre: the centre's other group loses them too.
    void eliminarEnCascada() {
        Db& db = env->db();
        const QStringList maracay =
            foto(db, {"venta_cupo_ganadores", "venta_cupo_tf"}).filter("MARACAY") +
            QStringList{textOf(db, "select group_concat(id order by id) from dividendos where ch='MARACAY'"),
                        textOf(db, "select group_concat(usuario order by usuario) from usuarios where grupo <> '08'")};
        Hipicos h(env->ctx);
        QVERIFY(h.leer("08"));
        env->dialogs.yes();
        QVERIFY(h.eliminar());
        QCOMPARE(env->dialogs.shown()[0].title, texto::TituloConfirmar);
        QCOMPARE(env->dialogs.last().text, kRegistroEliminado);
        QCOMPARE(gruposDe(db.query("select grupo from grupos order by grupo")), (QStringList{"07", "12", "15"}));
        QCOMPARE(numberOf(db, "select count(*) from usuarios where grupo='08'"), 0.0);
        for (const char* tabla : {"dividendos", "venta_cupo_ganadores", "venta_cupo_tf"})
            QCOMPARE(numberOf(db, std::string("select count(*) from ") + tabla + " where ch='LOS PINOS'"), 0.0);
        const QStringList despues =
            foto(db, {"venta_cupo_ganadores", "venta_cupo_tf"}).filter("MARACAY") +
            QStringList{textOf(db, "select group_concat(id order by id) from dividendos where ch='MARACAY'"),
                        textOf(db, "select group_concat(usuario order by usuario) from usuarios")};
        QCOMPARE(despues, maracay);
    }

    void eliminarTodoONada() {
        Db& db = env->db();
        env->connect()->exec("DROP TABLE dividendos");
        const QStringList antes = foto(db, {"grupos", "usuarios", "venta_cupo_ganadores", "venta_cupo_tf"});
        Hipicos h(env->ctx);
        QVERIFY(h.leer("12"));
        env->dialogs.yes();
        QVERIFY(!h.eliminar());
        QCOMPARE(env->dialogs.last().title, kTituloErrorBD);
        QCOMPARE(foto(db, {"grupos", "usuarios", "venta_cupo_ganadores", "venta_cupo_tf"}), antes);
        QVERIFY(h.hayRegistro());
    }

    void eliminarElGrupoPropio() {
        const QStringList antes = foto(env->db(), kCentro);
        Hipicos h(env->ctx);
        QVERIFY(h.leer("07"));
        QVERIFY(!h.eliminar());
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().text, kGrupoPropio);
        QCOMPARE(foto(env->db(), kCentro), antes);
    }

    // The transfer asks, checks the security key, and copies every group
    // of the system named by `conexion` to the betting-centre server.
    void transferir() {
        env->resetHipicos();
        Db& db = env->db();
        db.exec("INSERT INTO grupos (grupo, ch, subgrupo, contacto, telefono) VALUES ('30', 'SIN DATOS', '', '', '')");
        Hipicos h(env->ctx);
        auto hipicos = Db::open(cadenaHipicos(env->config));
        const QStringList antes = foto(*hipicos, {"centroshipicos"});

        env->dialogs.no();
        QVERIFY(!h.transferir());
        env->dialogs.yes().cancel();
        QVERIFY(!h.transferir());
        env->dialogs.yes().type("PQR482");
        QVERIFY(!h.transferir());
        QCOMPARE(env->dialogs.last().title, texto::TituloSeguridad);
        QCOMPARE(env->dialogs.last().text, kClaveSeguridadErrada);
        QCOMPARE(foto(*hipicos, {"centroshipicos"}), antes);
        env->dialogs.clear();

        for (int vez = 0; vez < 2; ++vez) {
            env->dialogs.yes().type("pqr482");
            QVERIFY(h.transferir());
            QCOMPARE(env->dialogs.shown()[1].title, texto::TituloSeguridad);
            QCOMPARE(env->dialogs.shown()[1].text, kClaveSeguridad);
            QCOMPARE(env->dialogs.last().text, kTransferidos);
            env->dialogs.clear();
        }
        const Recordset copia = hipicos->query("select * from centroshipicos order by grupo");
        QCOMPARE(gruposDe(copia), (QStringList{"07", "08", "12", "15", "30"}));
        for (const Row& r : copia) QCOMPARE(r.text("estatus"), QString("Activo"));
        const Row sinDatos = copia[4];
        QCOMPARE(sinDatos.text("contacto"), QString("N/A"));
        QCOMPARE(sinDatos.text("subgrupo"), QString("N/A"));
        QCOMPARE(sinDatos.text("ch"), QString("SIN DATOS"));
        QCOMPARE(copia[0].text("fecha_ingreso"), QString("2026-11-23"));
        QCOMPARE(copia[0].integer("subastas"), 2LL);
        QVERIFY(env->ctx.rs("rsCentrosHipicos").size() == 5);

        // The setting names another system: its groups are the ones copied.
        ServerConfig otro = env->config.servidor;
        otro.base = "t_hipicos_otro";
        crearEsquema(otro, scriptCentral(), true);
        Db::open(cadenaCentral(otro))->exec("INSERT INTO grupos (grupo, ch, contacto) VALUES ('77', 'REMOTO', 'ANA')");
        db.exec("update configuracion set conexion = ?", {cadenaCentral(otro)});
        env->dialogs.yes().type("pqr482");
        QVERIFY(h.transferir());
        env->dialogs.clear();
        QCOMPARE(gruposDe(hipicos->query("select grupo from centroshipicos order by grupo")),
                 (QStringList{"07", "08", "12", "15", "30", "77"}));
    }

    // The banks and the operation types: a description each on the same
    // pattern. A name is unique in any case; a row the ledger uses stays.
    void tablasDeNombres_data() {
        QTest::addColumn<int>("cual");
        QTest::addColumn<QString>("usado");  // the name of a row client movements use
        QTest::newRow("banks") << 0 << "EFECTIVO";
        QTest::newRow("operation types") << 1 << "JUGADA";
    }

    void tablasDeNombres() {
        QFETCH(int, cual);
        QFETCH(QString, usado);
        const TablaDeNombres& t = cual == 0 ? kBancos : kTiposOperacion;
        Db& db = env->db();
        const QString columna = QString::fromLatin1(t.nombre);
        NombresMaestro m(env->ctx, t);
        const auto contar = [&] { return numberOf(db, std::string("select count(*) from ") + t.tabla); };
        const double antes = contar();

        m.nuevo();
        QVERIFY(!m.guardar({{columna, usado.toLower()}}));
        QCOMPARE(env->dialogs.last().text, kNombreRepetido);
        QVERIFY(m.guardar({{columna, "NUEVO D'ÑANDÚ"}}));
        QCOMPARE(contar(), antes + 1);
        const QString id = m.claveActual();
        QCOMPARE(id, textOf(db, std::string("select max(") + t.clave + ") from " + t.tabla));
        QVERIFY(m.modificar({{columna, "RENOMBRADO"}}));
        QCOMPARE(textOf(db, std::string("select ") + t.nombre + " from " + t.tabla + " where " + t.clave + " = ?", {id}),
                 QString("RENOMBRADO"));

        QVERIFY(m.leer(textOf(db, std::string("select ") + t.clave + " from " + t.tabla + " where " + t.nombre + " = ?",
                              {usado})));
        QVERIFY(!m.eliminar());
        QCOMPARE(env->dialogs.last().text, kNombreEnUso);
        QVERIFY(m.leer(id));
        env->dialogs.yes();
        QVERIFY(m.eliminar());
        QCOMPARE(contar(), antes);
        env->dialogs.clear();
    }

    // The window: locked fields until Nuevo or Modificar, the yellow ones
    // marked for the style sheet, the toolbar back after a save, and the
    // grid's navigation.
    void ventana() {
        Form_Hipicos w(env->ctx);
        w.show();
        QApplication::processEvents();
        auto* grilla = w.findChild<QTableView*>("Grilla");
        auto* grupo = w.findChild<QLineEdit*>("grupo");
        auto* contacto = w.findChild<QLineEdit*>("contacto");
        auto boton = [&](const char* n) { return w.findChild<QPushButton*>(n); };
        QCOMPARE(grilla->model()->rowCount(), 4);
        QCOMPARE(grilla->model()->headerData(2, Qt::Horizontal).toString(), QString(" INICIALES "));
        QCOMPARE(grupo->text(), QString("07"));
        QVERIFY(!grupo->isEnabled() && !contacto->isEnabled());
        QCOMPARE(grupo->property("requerido").toBool(), true);
        QCOMPARE(w.findChild<QLineEdit*>("telefono")->property("requerido").toBool(), false);
        QVERIFY(boton("Boton_Nuevo")->isEnabled() && !boton("Boton_Guardar")->isEnabled());

        QTest::mouseClick(boton("Boton_Ultimo"), Qt::LeftButton);
        QCOMPARE(grupo->text(), QString("15"));
        QTest::mouseClick(boton("Boton_Anterior"), Qt::LeftButton);
        QCOMPARE(grupo->text(), QString("12"));

        QTest::mouseClick(boton("Boton_Nuevo"), Qt::LeftButton);
        QCOMPARE(w.modo(), VentanaMaestra::Modo::Nuevo);
        QVERIFY(grupo->isEnabled() && grupo->text().isEmpty());
        QCOMPARE(w.findChild<QLineEdit*>("fecha_ingreso")->text(), QString("23-11-2026"));
        QCOMPARE(w.findChild<QComboBox*>("subgrupo")->currentText(), QString("N/A"));
        for (const char* n : {"Boton_Nuevo", "Boton_Buscar", "Boton_Modificar", "Boton_Eliminar", "Boton_Siguiente",
                              "Boton_Transferir"})
            QVERIFY2(!boton(n)->isEnabled(), n);
        QTest::keyClicks(grupo, "21");
        QTest::keyClicks(w.findChild<QLineEdit*>("ch"), "LA ESPERANZA");
        QTest::mouseClick(boton("Boton_Guardar"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, kLlenarAmarillos);
        QCOMPARE(w.modo(), VentanaMaestra::Modo::Nuevo);
        QTest::keyClicks(contacto, "PEDRO");
        QTest::mouseClick(boton("Boton_Guardar"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, texto::DatosAlmacenados);
        QCOMPARE(w.modo(), VentanaMaestra::Modo::Consulta);
        QCOMPARE(grilla->model()->rowCount(), 5);
        QCOMPARE(grupo->text(), QString("21"));
        QVERIFY(!grupo->isEnabled());
        for (const char* n : {"Boton_Nuevo", "Boton_Buscar", "Boton_Modificar", "Boton_Eliminar", "Boton_Transferir"})
            QVERIFY2(boton(n)->isEnabled(), n);

        // Modificar unlocks all but the initials; Esc cancels the edit.
        QTest::mouseClick(boton("Boton_Modificar"), Qt::LeftButton);
        QVERIFY(!grupo->isEnabled() && contacto->isEnabled());
        contacto->clear();
        QTest::keyClicks(contacto, "OTRO");
        QTest::keyClick(contacto, Qt::Key_Escape);
        QCOMPARE(w.modo(), VentanaMaestra::Modo::Consulta);
        QCOMPARE(contacto->text(), QString("PEDRO"));
        QVERIFY(w.isVisible());

        // The filter lists a subgroup.
        w.findChild<QComboBox*>("Combo_Filtro")->setCurrentText("OCCIDENTE");
        QCOMPARE(grilla->model()->rowCount(), 2);
        QCOMPARE(grupo->text(), QString("12"));
        env->dialogs.clear();
    }

    // The users window on the same pattern: a level the list does not offer
    // stays through Modificar and Guardar, and so does the stored password
    // when its box is left empty.
    void ventanaDeUsuarios() {
        Db& db = env->db();
        const QString clave = textOf(db, "select clave from usuarios where usuario='socio'");
        Form_Usuarios w(env->ctx);
        w.show();
        QApplication::processEvents();
        auto* grilla = w.findChild<QTableView*>("Grilla");
        const Recordset& filas = static_cast<const RecordsetModel*>(grilla->model())->recordset();
        grilla->setCurrentIndex(grilla->model()->index(filas.find("usuario", "socio"), 0));
        auto* nivel = w.findChild<QComboBox*>("nivel");
        QCOMPARE(nivel->currentText(), QString("Socio"));
        QCOMPARE(w.findChild<QLineEdit*>("clave")->text(), QString());
        QTest::mouseClick(w.findChild<QPushButton*>("Boton_Modificar"), Qt::LeftButton);
        QVERIFY(!w.findChild<QLineEdit*>("usuario")->isEnabled());
        QCOMPARE(nivel->currentText(), QString("Socio"));
        auto* nombre = w.findChild<QLineEdit*>("nombre");
        nombre->clear();
        QTest::keyClicks(nombre, "SOCIO DE ORIENTE");
        QTest::mouseClick(w.findChild<QPushButton*>("Boton_Guardar"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, kDatosModificados);
        const Row r = db.query("select * from usuarios where usuario='socio'").first();
        QCOMPARE(r.text("nivel"), QString("Socio"));
        QCOMPARE(r.text("nombre"), QString("SOCIO DE ORIENTE"));
        QCOMPARE(r.text("clave"), clave);
        QCOMPARE(w.modo(), VentanaMaestra::Modo::Consulta);
        env->dialogs.clear();
    }
};

QTEST_MAIN(TstHipicos)
#include "tst_hipicos.moc"
