// The race card: horses entered by hand, the horse-name list, the copy of a
// card from the betting-centre server, the deletion of old rows, and the
// window driven from the keyboard.
#include "core/Connections.h"
#include "core/Formato.h"
#include "races/CarrerasLogica.h"
#include "races/Form_Carreras.h"
#include "support/TestEnv.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstCarreras : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    QString hoy() const { return fechaSql(env->clock.today()); }
    long long contar(const std::string& sql, const Params& p = {}) {
        return static_cast<long long>(numberOf(env->db(), sql, p));
    }
    long long carreras() { return contar("select count(*) from carreras"); }
    long long caballos() { return contar("select count(*) from caballos"); }
    void refused(const QString& title, const QString& text) {
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        QCOMPARE(env->dialogs.last().title, title);
        QCOMPARE(env->dialogs.last().text, text);
    }
    void informed(const QString& title, const QString& text) {
        QCOMPARE(env->dialogs.last().kind, ScriptedDialogs::Kind::Message);
        QCOMPARE(env->dialogs.last().icon, Icon::Information);
        QCOMPARE(env->dialogs.last().title, title);
        QCOMPARE(env->dialogs.last().text, text);
    }

private slots:
    void initTestCase() { env = std::make_unique<TestEnv>("carreras"); }

    void init() {
        env->loadDemo();
        env->signIn("admin");
        env->dialogs.clear();
    }

    void aceptarWritesTheManualEntryRow() {
        env->db().exec("update configuracion set apuesta_max_win=?, cupo_tf=?", {4321.5, 77.0});
        const long long antes = carreras();
        CarrerasLogica l(env->ctx);
        QVERIFY(l.aceptar({QDate(2026, 12, 24), "SANTA RITA", "9", "RELAMPAGO", "3"}));
        QCOMPARE(env->dialogs.count(), 0);
        QCOMPARE(carreras(), antes + 1);
        const Row r = env->db().query("select * from carreras order by id_carrera desc limit 1").first();
        QCOMPARE(r.text("fecha"), QString("2026-12-24"));
        QCOMPARE(r.integer("carrera"), 9LL);
        QCOMPARE(r.text("caballo"), QString("RELAMPAGO"));
        QCOMPARE(r.integer("nu_caballo"), 3LL);
        QCOMPARE(r.integer("id_hipodromo"), 2LL);
        QCOMPARE(r.number("apuesta_max_win"), 4321.5);
        // Left to the columns' defaults: a horse entered by hand is closed for sale.
        for (const char* cero : {"retirado", "retirado_tf", "favorito", "apuesta_max_tf", "valor_tf", "estado",
                                 "venta", "venta_tf", "venta_rm", "venta_mc", "estado_puestos", "dividendo"})
            QVERIFY2(r.number(cero) == 0, cero);
        // The name is appended to the known names even when it is already there.
        QCOMPARE(contar("select count(*) from caballos where nombre=?", {"RELAMPAGO"}), 2LL);
    }

    void aceptarStoresEmptyBoxesAsGiven() {
        CarrerasLogica l(env->ctx);
        QVERIFY(l.aceptar({QDate(2026, 12, 24), "LA RINCONADA", "4", "", ""}));
        const Row r = env->db().query("select * from carreras order by id_carrera desc limit 1").first();
        QCOMPARE(r.text("caballo"), QString());
        QCOMPARE(r.integer("nu_caballo"), 0LL);
        QCOMPARE(contar("select count(*) from caballos where nombre=''"), 1LL);
    }

    void aceptarUnknownTrackWritesNothing_data() {
        QTest::addColumn<QString>("hipodromo");
        QTest::newRow("unknown") << "HIPODROMO X";
        QTest::newRow("empty") << "";
        QTest::newRow("wrong case") << "la rinconada";
        QTest::newRow("injection") << "x' or '1'='1";
    }

    void aceptarUnknownTrackWritesNothing() {
        QFETCH(QString, hipodromo);
        const long long c = carreras(), n = caballos();
        CarrerasLogica l(env->ctx);
        QVERIFY(!l.aceptar({env->clock.today(), hipodromo, "1", "NUEVO", "13"}));
        refused("Verifique e intente nuevamente", "Debe seleccionar un hipodromo");
        QCOMPARE(carreras(), c);
        QCOMPARE(caballos(), n);
    }

    void aceptarRefusesANumberTooLong() {
        const long long c = carreras();
        CarrerasLogica l(env->ctx);
        QVERIFY(!l.aceptar({env->clock.today(), "LA RINCONADA", "1", "NUEVO", "99999999999"}));
        refused("Verifique e intente nuevamente", "EL NUMERO DE CARRERA O DE CABALLO NO ES VALIDO");
        QCOMPARE(carreras(), c);
    }

    // A name longer than its column is refused; the column counts characters, not bytes.
    void aceptarRefusesANameTooLong() {
        const long long c = carreras(), n = caballos();
        CarrerasLogica l(env->ctx);
        QVERIFY(!l.aceptar({env->clock.today(), "LA RINCONADA", "1", QString(101, 'A'), "13"}));
        refused("Verifique e intente nuevamente", "EL NOMBRE DEL CABALLO ES DEMASIADO LARGO: MAXIMO 100 CARACTERES");
        QCOMPARE(carreras(), c);
        QCOMPARE(caballos(), n);
        env->dialogs.clear();
        QVERIFY(l.aceptar({env->clock.today(), "LA RINCONADA", "1", QString(100, QChar(0x00D1)), "13"}));
        QCOMPARE(contar("select count(*) from caballos where nombre=?", {QString(100, QChar(0x00D1))}), 1LL);
    }

    void wildcardsMatchLiterally_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("nombre");  // the one name that contains it
        QTest::newRow("percent") << "%" << "CIEN % PURO";
        QTest::newRow("underscore") << "_" << "A_B";
        QTest::newRow("escape character") << "!" << "UNO!DOS";
        QTest::newRow("backslash") << "\\" << "BARRA \\ DOBLE";
    }
    // "%" and "_" typed in the search or the delete are letters of a name:
    // deleting "%" removes the name that has one, not the oldest horse.
    void wildcardsMatchLiterally() {
        QFETCH(QString, texto);
        QFETCH(QString, nombre);
        for (const char* n : {"CIEN % PURO", "A_B", "UNO!DOS", "BARRA \\ DOBLE"})
            env->db().exec("INSERT INTO caballos (nombre) VALUES (?)", {n});
        CarrerasLogica l(env->ctx);
        const Recordset encontrados = l.buscarCaballos(texto);
        QCOMPARE(encontrados.size(), 1);
        QCOMPARE(encontrados.first().text("nombre"), nombre);
        const long long antes = caballos();
        QVERIFY(l.eliminarCaballo(texto));
        QCOMPARE(caballos(), antes - 1);
        QCOMPARE(contar("select count(*) from caballos where nombre=?", {nombre}), 0LL);
    }

    void searchAsTyped() {
        CarrerasLogica l(env->ctx);
        QStringList nombres;
        for (const Row& r : l.buscarCaballos("ANA")) nombres << r.text("nombre");
        nombres.sort();
        QCOMPARE(nombres, QStringList({"ANACONDA", "LA GITANA", "PRINCESA ANA"}));
        QCOMPARE(l.buscarCaballos("o'brien").size(), 0);
        QCOMPARE(l.buscarCaballos("").size(), 36);
    }

    void deletingAnaRemovesOnlyTheFirstMatch() {
        const long long antes = caballos();
        const long long primera = contar("select min(id_caballo) from caballos where nombre like '%ANA%'");
        CarrerasLogica l(env->ctx);
        QVERIFY(l.eliminarCaballo("ANA"));
        informed("Mantenimiento de Caballos", "Caballo Eliminado con Exito");
        QCOMPARE(caballos(), antes - 1);
        QCOMPARE(contar("select count(*) from caballos where id_caballo=?", {primera}), 0LL);
        QCOMPARE(contar("select count(*) from caballos where nombre like '%ANA%'"), 2LL);
    }

    void deletingAnEmptyNameDeletesNothing() {
        const long long antes = caballos();
        CarrerasLogica l(env->ctx);
        QVERIFY(!l.eliminarCaballo("  "));
        refused("Mantenimiento de Caballos", "DEBE INDICAR EL NOMBRE DEL CABALLO A ELIMINAR");
        QCOMPARE(caballos(), antes);
    }

    void gridWithAndWithoutTrack() {
        CarrerasLogica l(env->ctx);
        // Race 1 has 8 horses on LA RINCONADA and 9 on SANTA RITA.
        QCOMPARE(l.llenarGrilla(env->clock.today(), "1").size(), 17);
        const Recordset una = l.llenarGrillaHipodromo(env->clock.today(), "1", "LA RINCONADA");
        QCOMPARE(una.size(), 8);
        QCOMPARE(una.columnNames(), QStringList({"id_carrera", "nu_caballo", "caballo"}));
        QCOMPARE(l.llenarGrillaHipodromo(env->clock.today(), "1", "NINGUNO").size(), 0);
        QCOMPARE(l.llenarGrilla(env->clock.today().addDays(-1), "1").size(), 0);
    }

    void transfer() {
        env->resetHipicos();  // tomorrow's card: 3 + 2 races of six horses
        env->db().exec("update configuracion set apuesta_max_win=?, cupo_tf=?, carrera=7", {2500.0, 80.0});
        const QDate manana = env->clock.today().addDays(1);
        const QString fecha = fechaSql(manana);
        CarrerasLogica l(env->ctx);

        // Nothing on that date yet: no question.
        QVERIFY(l.transferirCarreras(manana, manana));
        QCOMPARE(env->dialogs.count(), 1);
        informed("Administración de Sistemas", "Carreras Transferidas con Exito");
        QCOMPARE(contar("select count(*) from carreras where fecha=?", {fecha}), 30LL);
        QCOMPARE(textOf(env->db(), "select fecha from configuracion"), fecha);
        QCOMPARE(contar("select carrera from configuracion"), 1LL);

        // The copied values, row for row against the source.
        const Recordset origen = env->ctx.hipicos().query("select * from carreras order by id_carrera");
        const Recordset copia =
            env->db().query("select * from carreras where fecha=? order by id_carrera", {fecha});
        QCOMPARE(copia.size(), origen.size());
        int retirados = 0;
        for (int i = 0; i < copia.size(); ++i) {
            const Row& o = origen[i];
            const Row& c = copia[i];
            for (const char* col : {"fecha", "carrera", "caballo", "nu_caballo", "retirado", "favorito", "id_hipodromo"})
                QCOMPARE(c.text(col), o.text(col));
            QCOMPARE(c.integer("retirado_tf"), o.integer("retirado"));
            retirados += static_cast<int>(c.integer("retirado_tf"));
            QCOMPARE(c.number("apuesta_max_win"), 2500.0);
            QCOMPARE(c.number("apuesta_max_tf"), 80.0);
            QCOMPARE(c.number("valor_tf"), 0.0);
            QCOMPARE(c.integer("estado"), 0LL);
            QCOMPARE(c.integer("venta"), 1LL);
            QCOMPARE(c.integer("venta_tf"), 1LL);
            QCOMPARE(c.integer("venta_rm"), 1LL);
            QCOMPARE(c.integer("venta_mc"), 0LL);
        }
        QCOMPARE(retirados, 1);

        // Again: the question; No changes nothing.
        env->dialogs.clear();
        env->db().exec("update configuracion set carrera=7");
        env->dialogs.no();
        QVERIFY(!l.transferirCarreras(manana, manana));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().kind, ScriptedDialogs::Kind::Confirm);
        QCOMPARE(env->dialogs.last().icon, Icon::Question);
        QCOMPARE(env->dialogs.last().title, QString("VERIFICACION DE LAS CARRERAS"));
        QCOMPARE(env->dialogs.last().text, QString("Esta conexion ya tiene las Carreras,Desea Cargalas de Nuevo?"));
        QCOMPARE(contar("select count(*) from carreras where fecha=?", {fecha}), 30LL);
        QCOMPARE(contar("select carrera from configuracion"), 7LL);

        // Yes: a second copy of every horse.
        env->dialogs.clear();
        env->dialogs.yes();
        QVERIFY(l.transferirCarreras(manana, manana));
        informed("Administración de Sistemas", "Carreras Transferidas con Exito");
        QCOMPARE(contar("select count(*) from carreras where fecha=?", {fecha}), 60LL);
        QCOMPARE(contar("select count(*) from (select caballo from carreras where fecha=? group by fecha, carrera, "
                        "id_hipodromo, nu_caballo, caballo having count(*) = 2) d",
                        {fecha}),
                 30LL);
        QCOMPARE(contar("select carrera from configuracion"), 1LL);
    }

    void transferTakesTheFirstRaceOfTheRange() {
        env->resetHipicos();
        ConectarHipicos(env->ctx);
        Db& hip = env->ctx.hipicos();
        hip.exec("delete from carreras");
        hip.exec("insert into carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo) values "
                 "('2027-01-11', 2, 1, 'B', 1), ('2027-01-10', 4, 1, 'A', 1), ('2027-01-10', 3, 2, 'C', 1), "
                 "('2027-01-12', 1, 1, 'D', 1)");
        CarrerasLogica l(env->ctx);
        QVERIFY(l.transferirCarreras(QDate(2027, 1, 10), QDate(2027, 1, 11)));
        QCOMPARE(contar("select count(*) from carreras where fecha between '2027-01-10' and '2027-01-12'"), 3LL);
        QCOMPARE(contar("select carrera from configuracion"), 3LL);
        QCOMPARE(textOf(env->db(), "select fecha from configuracion"), QString("2027-01-10"));
    }

    void transferOfAnEmptyRangeChangesNothing() {
        env->resetHipicos();
        const long long antes = carreras();
        CarrerasLogica l(env->ctx);
        QVERIFY(!l.transferirCarreras(QDate(2030, 1, 1), QDate(2030, 1, 2)));
        refused("Administración de Sistemas", "NO HAY CARRERAS PARA TRANSFERIR EN ESAS FECHAS");
        QCOMPARE(carreras(), antes);
        QCOMPARE(textOf(env->db(), "select fecha from configuracion"), hoy());
    }

    void housekeeping_data() {
        QTest::addColumn<int>("boton");
        QTest::addColumn<QStringList>("tablas");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("old races") << 0 << QStringList{"carreras", "condicionados"} << "Carreras Eliminadas con Exito";
        QTest::newRow("old auctions and logs")
            << 1 << QStringList{"bitacora", "carreras_remate", "descargas"}
            << "Remates,Bitacora,Descargas Eliminadas con Exito";
        QTest::newRow("old tickets") << 2 << QStringList{"ventas_ganadores"}
                                     << "Los Boletos Viejos han sido eliminados con exito";
    }

    void housekeeping() {
        QFETCH(int, boton);
        QFETCH(QStringList, tablas);
        QFETCH(QString, mensaje);
        const QStringList todas = {"carreras", "condicionados", "bitacora", "carreras_remate", "descargas",
                                   "ventas_ganadores"};
        const QStringList fechas = {"2020-06-14", "2020-06-15", "2020-06-16"};
        for (const QString& t : todas)
            for (const QString& f : fechas)
                env->db().exec(("insert into " + t + " (fecha) values (?)").toStdString(), {f});
        auto cuenta = [&](const QString& t, const QString& f) {
            return contar(("select count(*) from " + t + " where fecha=?").toStdString(), {f});
        };
        const long long hoyAntes = cuenta("carreras", hoy());

        CarrerasLogica l(env->ctx);
        const QDate corte(2020, 6, 15);
        if (boton == 0) l.eliminarCarrerasViejas(corte);
        if (boton == 1) l.eliminarRematesViejos(corte);
        if (boton == 2) l.eliminarBoletosViejos(corte);

        QCOMPARE(env->dialogs.count(), 1);
        informed("Mantenimiento del Sistema", mensaje);
        for (const QString& t : todas) {
            QCOMPARE(cuenta(t, "2020-06-14"), tablas.contains(t) ? 0LL : 1LL);
            QCOMPARE(cuenta(t, "2020-06-15"), 1LL);
            QCOMPARE(cuenta(t, "2020-06-16"), 1LL);
        }
        QCOMPARE(cuenta("carreras", hoy()), hoyAntes);
    }

    void deleteRace() {
        CarrerasLogica l(env->ctx);
        const QDate dia = env->clock.today();
        QCOMPARE(l.eliminarCarrera(dia, "2", "LA RINCONADA"), 10LL);
        QCOMPARE(env->dialogs.count(), 0);
        QCOMPARE(l.llenarGrillaHipodromo(dia, "2", "LA RINCONADA").size(), 0);
        QCOMPARE(l.llenarGrillaHipodromo(dia, "2", "SANTA RITA").size(), 7);
        QCOMPARE(l.llenarGrillaHipodromo(dia, "3", "LA RINCONADA").size(), 7);
        QCOMPARE(l.eliminarCarrera(dia, "2", "NINGUNO"), 0LL);
    }

    // The window: a whole race entered from the keyboard.
    void windowKeyboardEntry() {
        Form_Carreras w(env->ctx);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        auto* hipodromo = w.findChild<QComboBox*>("hipodromo");
        auto* carrera = w.findChild<QComboBox*>("carrera");
        auto* busqueda = w.findChild<QLineEdit*>("busqueda");
        auto* caballo = w.findChild<QLineEdit*>("caballo");
        auto* numero = w.findChild<QLineEdit*>("numero");
        auto* grilla = w.findChild<QTableView*>("grilla");
        QCOMPARE(hipodromo->count(), 3);
        // The card starts on the system's current track.
        QCOMPARE(hipodromo->currentText(), QString("LA RINCONADA"));
        QCOMPARE(w.findChild<QDateEdit*>("fecha")->date(), env->clock.today());

        // Enter moves from the date to the track; the track and race by keys.
        w.findChild<QDateEdit*>("fecha")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), hipodromo);
        QTest::keyClick(hipodromo, Qt::Key_Down);
        QCOMPARE(hipodromo->currentText(), QString("SANTA RITA"));
        QTest::keyClick(hipodromo, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), carrera);
        QTest::keyClicks(carrera, "9");
        QCOMPARE(carrera->currentText(), QString("9"));
        QTest::keyClick(carrera, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), busqueda);

        // A known horse: typed in part (lower case comes out upper case), Enter takes it.
        QTest::keyClicks(busqueda, "relamp");
        QCOMPARE(busqueda->text(), QString("RELAMP"));
        QTest::keyClick(busqueda, Qt::Key_Return);
        QCOMPARE(caballo->text(), QString("RELAMPAGO"));
        QCOMPARE(QApplication::focusWidget(), numero);
        QTest::keyClicks(numero, "1a.,");
        QCOMPARE(numero->text(), QString("1"));
        QTest::keyClick(numero, Qt::Key_Return);
        QCOMPARE(env->dialogs.count(), 0);
        QCOMPARE(contar("select count(*) from carreras where carrera=9 and id_hipodromo=2 and caballo='RELAMPAGO' "
                        "and nu_caballo=1"),
                 1LL);
        QCOMPARE(QApplication::focusWidget(), busqueda);
        QCOMPARE(busqueda->text(), QString());
        QCOMPARE(caballo->text(), QString());
        QCOMPARE(numero->text(), QString("2"));
        QCOMPARE(grilla->model()->rowCount(), 1);
        QCOMPARE(grilla->model()->headerData(0, Qt::Horizontal).toString(), QString(" ID "));
        QCOMPARE(grilla->model()->headerData(2, Qt::Horizontal).toString(), QString(" CABALLO "));

        // A new horse: the typed name is taken as it is; Down and Enter pick from the list.
        QTest::keyClicks(busqueda, "nuevo astro");
        QTest::keyClick(busqueda, Qt::Key_Return);
        QCOMPARE(caballo->text(), QString("NUEVO ASTRO"));
        QTest::keyClick(numero, Qt::Key_Return);
        QTest::keyClicks(busqueda, "gitan");
        QTest::keyClick(busqueda, Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(caballo->text(), QString("LA GITANA"));
        QCOMPARE(numero->text(), QString("3"));
        QTest::keyClick(numero, Qt::Key_Return);
        QCOMPARE(grilla->model()->rowCount(), 3);
        QCOMPARE(contar("select count(*) from carreras where carrera=9 and fecha=?", {hoy()}), 3LL);
        QCOMPARE(contar("select count(*) from caballos where nombre='NUEVO ASTRO'"), 1LL);

        // Esc closes the window.
        QTest::keyClick(busqueda, Qt::Key_Escape);
        QVERIFY(!w.isVisible());
    }

    void windowWithoutTrackRefuses() {
        Form_Carreras w(env->ctx);
        w.show();
        w.findChild<QComboBox*>("hipodromo")->setCurrentIndex(-1);
        w.findChild<QLineEdit*>("caballo")->setText("TITAN");
        const long long antes = carreras();
        w.findChild<QPushButton*>("aceptar")->click();
        refused("Verifique e intente nuevamente", "Debe seleccionar un hipodromo");
        QCOMPARE(carreras(), antes);
    }

    void windowViewingListAndScreenshot() {
        Form_Carreras w(env->ctx);
        w.show();
        auto* ver = w.findChild<QComboBox*>("verCarrera");
        auto* grilla = w.findChild<QTableView*>("grilla");
        w.findChild<QComboBox*>("hipodromo")->setCurrentIndex(0);
        QCOMPARE(grilla->model()->rowCount(), 17);  // race 1, both tracks
        // Typing a race number shows the chosen track only.
        ver->setFocus();
        ver->lineEdit()->selectAll();
        QTest::keyClicks(ver, "4");
        QCOMPARE(grilla->model()->rowCount(), 12);
        // Picking it from the list shows every track.
        emit ver->activated(ver->currentIndex());
        QCOMPARE(grilla->model()->rowCount(), 20);
        w.findChild<QLineEdit*>("busqueda")->setText("AN");
        grab(&w, "Form_Carreras");
    }
};

QTEST_MAIN(TstCarreras)
#include "tst_carreras.moc"
