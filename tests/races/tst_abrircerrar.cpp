// Opening and closing pools: the flags each button writes for every
// combination of boxes, the track condition of the buttons against the
// current race, the warning before a processed race is opened again, the
// indicators and the window from the keyboard.
#include "core/Formato.h"
#include "races/AbrirCerrarLogica.h"
#include "races/Form_AbrirCerrar.h"
#include "support/TestEnv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <chrono>
#include <future>

using namespace hipico;
using namespace hipico::test;

namespace {

enum Operacion { Abrir, Cerrar, AbrirActual, CerrarActual };

struct Banderas {
    int estadoPuestos, venta, ventaRm, ventaMc, ventaTf;
    bool operator==(const Banderas&) const = default;
};

}  // namespace

namespace QTest {
template <>
char* toString(const Banderas& b) {
    return qstrdup(QString("puestos=%1 venta=%2 rm=%3 mc=%4 tf=%5")
                       .arg(b.estadoPuestos)
                       .arg(b.venta)
                       .arg(b.ventaRm)
                       .arg(b.ventaMc)
                       .arg(b.ventaTf)
                       .toUtf8()
                       .constData());
}
}  // namespace QTest

class TstAbrirCerrar : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString titulo;
    bool demoDeCombinaciones = false;

    QString hoy() const { return fechaSql(env->clock.today()); }

    // The flags of one race of one track (every horse row must agree).
    Banderas banderas(int carrera, int hipodromo) {
        const Recordset rs = env->db().query(
            "select distinct estado_puestos, venta, venta_rm, venta_mc, venta_tf from carreras "
            "where carrera=? and id_hipodromo=? and fecha=?",
            {carrera, hipodromo, hoy()});
        if (rs.size() != 1) return {-1, -1, -1, -1, -1};
        const Row& r = rs.first();
        return {r.toInt("estado_puestos"), r.toInt("venta"), r.toInt("venta_rm"), r.toInt("venta_mc"),
                r.toInt("venta_tf")};
    }
    void poner(int carrera, int v) {
        env->db().exec("update carreras set estado_puestos=?, venta=?, venta_rm=?, venta_mc=?, venta_tf=? "
                       "where carrera=? and fecha=?",
                       {v, v, v, v, v, carrera, hoy()});
    }
    Row conf() { return env->db().query("select * from configuracion").first(); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("abrircerrar");
        env->ctx.tituloMenu = [this](const QString& t) { titulo = t; };
    }

    void init() {
        // The rows of everyCombination set every flag they look at themselves:
        // one demo day serves them all.
        const bool combinacion = QByteArray(QTest::currentTestFunction()) == "everyCombination";
        if (!combinacion || !demoDeCombinaciones) {
            env->loadDemo();
            env->signIn("admin");
        }
        demoDeCombinaciones = combinacion;
        env->dialogs.clear();
        titulo.clear();
    }

    void tracksWithStatusOne() {
        AbrirCerrarLogica l(env->ctx);
        QCOMPARE(l.hipodromos(), QStringList({"LA RINCONADA", "SANTA RITA"}));  // VALENCIA is inactive
        QVERIFY(!l.elegirHipodromo("NINGUNO"));
        QVERIFY(l.indicadores().isEmpty());
        QVERIFY(!l.abrir(3, {true, true, true, true}));
        QCOMPARE(env->dialogs.last().text, QString("Debe seleccionar un hipodromo"));
    }

    void everyCombination_data() {
        QTest::addColumn<int>("operacion");
        QTest::addColumn<bool>("ganadores");
        QTest::addColumn<bool>("remate");
        QTest::addColumn<bool>("macuare");
        QTest::addColumn<bool>("tablaFija");
        const char* nombres[] = {"open", "close", "open current", "close current"};
        for (int op = Abrir; op <= CerrarActual; ++op)
            for (int bits = 0; bits < 16; ++bits)
                QTest::addRow("%s g%d r%d m%d t%d", nombres[op], bits & 1, (bits >> 1) & 1, (bits >> 2) & 1,
                              (bits >> 3) & 1)
                    << op << bool(bits & 1) << bool(bits & 2) << bool(bits & 4) << bool(bits & 8);
    }

    void everyCombination() {
        QFETCH(int, operacion);
        QFETCH(bool, ganadores);
        QFETCH(bool, remate);
        QFETCH(bool, macuare);
        QFETCH(bool, tablaFija);
        const int v = (operacion == Abrir || operacion == AbrirActual) ? 1 : 0;
        const int antes = 1 - v;
        const bool actual = operacion == AbrirActual || operacion == CerrarActual;
        // Race 3 runs on both tracks; everything starts the other way round.
        poner(3, antes);
        poner(4, antes);
        env->db().exec("update configuracion set carrera=8, venta_ganadores=?, venta_remate=?, venta_macuare=?, "
                       "venta_tf=?, mensajetaq='CIERRE A LAS 5'",
                       {antes, antes, antes, antes});

        AbrirCerrarLogica l(env->ctx);
        QVERIFY(l.elegirHipodromo("LA RINCONADA"));
        const Pozos p{ganadores, remate, macuare, tablaFija};
        bool hecho = false;
        switch (operacion) {
        case Abrir: hecho = l.abrir(3, p); break;
        case Cerrar: hecho = l.cerrar(3, p); break;
        case AbrirActual: hecho = l.abrirCarreraActual(3, p); break;
        case CerrarActual: hecho = l.cerrarCarreraActual(3, p); break;
        }
        QVERIFY(hecho);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().icon, Icon::Information);
        QCOMPARE(env->dialogs.last().title, QString("Administración de Carreras"));
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));

        auto f = [&](bool marcado) { return marcado ? v : antes; };
        const Banderas esperadas{v, f(ganadores), f(remate), actual ? f(macuare) : antes, f(tablaFija)};
        QCOMPARE(banderas(3, 1), esperadas);
        // The buttons keep to the chosen track; the current race is every track's.
        QCOMPARE(banderas(3, 2), (actual ? esperadas : Banderas{antes, antes, antes, antes, antes}));
        QCOMPARE(banderas(4, 1), (Banderas{antes, antes, antes, antes, antes}));

        const Row c = conf();
        if (actual) {
            QCOMPARE(c.integer("carrera"), 3LL);
            QCOMPARE(c.text("fecha"), hoy());
            QCOMPARE(c.toInt("venta_ganadores"), f(ganadores));
            QCOMPARE(c.toInt("venta_remate"), f(remate));
            QCOMPARE(c.toInt("venta_macuare"), f(macuare));
            QCOMPARE(c.toInt("venta_tf"), f(tablaFija));
            QCOMPARE(c.text("mensajetaq"), v == 1 ? QString("CIERRE A LAS 5") : QString());
            QVERIFY(titulo.startsWith("MENU PRINCIPAL - "));
            QVERIFY2(titulo.endsWith(v == 1 ? "CARRERA ACTUAL: 3 ABIERTA" : "CARRERA ACTUAL: 3 CERRADA"),
                     qPrintable(titulo));
        } else {
            QCOMPARE(c.integer("carrera"), 8LL);
            QCOMPARE(c.toInt("venta_ganadores"), antes);
            QCOMPARE(c.text("mensajetaq"), QString("CIERRE A LAS 5"));
            QVERIFY(titulo.isEmpty());
        }
    }

    void twoTracksButtonsVersusCurrentRace() {
        poner(5, 0);
        AbrirCerrarLogica l(env->ctx);
        QVERIFY(l.elegirHipodromo("SANTA RITA"));
        QVERIFY(l.abrir(5, {true, false, false, false}));
        QCOMPARE(banderas(5, 2), (Banderas{1, 1, 0, 0, 0}));
        QCOMPARE(banderas(5, 1), (Banderas{0, 0, 0, 0, 0}));
        QVERIFY(l.abrirCarreraActual(5, {true, true, false, true}));
        QCOMPARE(banderas(5, 1), (Banderas{1, 1, 1, 0, 1}));
        QCOMPARE(banderas(5, 2), (Banderas{1, 1, 1, 0, 1}));
    }

    void processedRaceWarning_data() {
        QTest::addColumn<double>("dividendo");
        QTest::addColumn<int>("respuesta");  // -1 not asked, 0 No, 1 Yes
        QTest::newRow("not processed") << 0.0 << -1;
        QTest::newRow("processed, no") << 0.01 << 0;
        QTest::newRow("processed, yes") << 0.01 << 1;
    }

    void processedRaceWarning() {
        QFETCH(double, dividendo);
        QFETCH(int, respuesta);
        poner(6, 0);
        // The result is on the second track's rows only.
        env->db().exec("update carreras set dividendo=? where carrera=6 and id_hipodromo=2 and fecha=?",
                       {dividendo, hoy()});
        env->db().exec("update configuracion set carrera=5, venta_ganadores=0");
        if (respuesta == 0) env->dialogs.no();
        if (respuesta == 1) env->dialogs.yes();
        AbrirCerrarLogica l(env->ctx);
        const bool hecho = l.abrirCarreraActual(6, {true, false, false, false});
        QCOMPARE(hecho, respuesta != 0);
        if (respuesta >= 0) {
            const auto& pregunta = env->dialogs.shown().first();
            QCOMPARE(pregunta.kind, ScriptedDialogs::Kind::Confirm);
            QCOMPARE(pregunta.icon, Icon::Critical);
            QCOMPARE(pregunta.title, QString("VERIFIQUE EL PROCESO"));
            QCOMPARE(pregunta.text, QString("Esta apunto de abrir una carrera ya procesada"));
        }
        const int v = respuesta == 0 ? 0 : 1;
        QCOMPARE(banderas(6, 1), (Banderas{v, v, 0, 0, 0}));
        QCOMPARE(banderas(6, 2), (Banderas{v, v, 0, 0, 0}));
        QCOMPARE(conf().integer("carrera"), respuesta == 0 ? 5LL : 6LL);
        QCOMPARE(conf().toInt("venta_ganadores"), v);
        QCOMPARE(env->dialogs.count(), respuesta == 0 ? 1 : (respuesta < 0 ? 1 : 2));
        if (respuesta == 0) QVERIFY(titulo.isEmpty());
    }

    void closingAProcessedRaceAsksNothing() {
        env->db().exec("update carreras set dividendo=4.5 where carrera=1 and fecha=?", {hoy()});
        AbrirCerrarLogica l(env->ctx);
        QVERIFY(l.cerrarCarreraActual(1, {true, true, true, true}));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(banderas(1, 1), (Banderas{0, 0, 0, 0, 0}));
    }

    // A sale in flight holds its horse's row; closing the pool waits for it
    // instead of failing, and takes effect as soon as the sale commits. The
    // close writes the race's rows one at a time first (so that on a cluster
    // it meets one horse's sales at a time, not all of them at once): while
    // it waits for the sale's horse, the rows before it are already closed
    // and the rows after it not yet. (On one server: across the nodes of a
    // cluster the two conflict instead and one of them runs again.)
    void closingWaitsForASaleInFlight() {
        const QList<long long> filas = [&] {
            QList<long long> ids;
            for (const Row& r : env->db().query(
                     "select id_carrera from carreras where carrera=1 and id_hipodromo=1 and fecha=? order by id_carrera",
                     {hoy()}))
                ids << r.integer("id_carrera");
            return ids;
        }();
        QVERIFY(filas.size() >= 3);
        const long long enVenta = filas[filas.size() / 2];
        auto venta = Db::open(env->db().connectionString());
        venta->begin();
        QCOMPARE(venta->query("select venta from carreras where id_carrera=? for update", {enVenta}).first().toInt("venta"),
                 1);
        AbrirCerrarLogica l(env->ctx);
        QVERIFY(l.elegirHipodromo("LA RINCONADA"));
        auto cierre = std::async(std::launch::async, [&] { return l.cerrar(1, {true, false, false, false}); });
        QCOMPARE(cierre.wait_for(std::chrono::milliseconds(400)), std::future_status::timeout);
        // Seen from a third connection (the close's own is busy waiting).
        auto otra = Db::open(env->db().connectionString());
        const auto vende = [&](long long id) {
            return int(numberOf(*otra, "select venta from carreras where id_carrera=?", {id}));
        };
        for (long long id : filas) QCOMPARE(vende(id), id < enVenta ? 0 : 1);
        venta->exec("INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, fecha) VALUES (1, 2, 5, "
                    "'LOS PINOS', '07', ?)",
                    {hoy()});
        venta->exec("update carreras set boletos = boletos + 1 where id_carrera=?", {enVenta});
        venta->commit();
        QVERIFY(cierre.get());
        QCOMPARE(banderas(1, 1).venta, 0);
        QCOMPARE(numberOf(env->db(), "select count(*) from ma_principal where carrera=1"), 1.0);
    }

    void indicatorsFromTheDistinctQuery() {
        AbrirCerrarLogica l(env->ctx);
        QVERIFY(l.elegirHipodromo("LA RINCONADA"));
        const QVector<Indicador> filas = l.indicadores();
        QCOMPARE(filas.size(), 8);
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(filas[i].carrera, i + 1);
            QCOMPARE(filas[i].venta, i == 0 ? 1 : 0);
        }
    }

    void windowIndicatorsFollowTheFlags() {
        Form_AbrirCerrar w(env->ctx);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        auto* reloj = w.findChild<QTimer*>();
        QVERIFY(reloj && reloj->isActive());
        QCOMPARE(reloj->interval(), 1000);
        QCOMPARE(w.findChild<QComboBox*>("hipodromo")->currentText(), QString("LA RINCONADA"));
        auto marcas = w.marcas();
        QCOMPARE(marcas.size(), 8);
        QCOMPARE(marcas[0].carrera, QString("1"));
        QCOMPARE(marcas[0].ganadores, QColor(0, 192, 0));
        QCOMPARE(marcas[1].ganadores, QColor(192, 0, 0));
        // A legend says what the colours mean.
        QStringList textos;
        for (const QLabel* l : w.findChildren<QLabel*>()) textos << l->text();
        QVERIFY(textos.contains("Abierta a la venta") && textos.contains("Cerrada"));

        // Another booth's administrator opens race 2's auction: the next tick shows it.
        auto otra = env->connect();
        otra->exec("update carreras set venta_rm=1 where carrera=2 and id_hipodromo=1 and fecha=?", {hoy()});
        w.refrescar();
        marcas = w.marcas();
        QCOMPARE(marcas[1].remate, QColor(0, 192, 0));
        QCOMPARE(marcas[1].ganadores, QColor(192, 0, 0));
        QCOMPARE(marcas[1].tablaFija, QColor(192, 0, 0));

        // The other track has eight races too; a card of three shows three.
        otra->exec("delete from carreras where id_hipodromo=2 and carrera>3 and fecha=?", {hoy()});
        w.findChild<QComboBox*>("hipodromo")->setCurrentIndex(1);
        QCOMPARE(w.marcas().size(), 3);
        w.findChild<QComboBox*>("hipodromo")->setCurrentIndex(0);

        w.close();
        QVERIFY(!reloj->isActive());
        QCOMPARE(titulo, QString("MENU PRINCIPAL -  LOS PINOS - admin"));
    }

    void windowFromTheKeyboard() {
        poner(2, 0);
        Form_AbrirCerrar w(env->ctx);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        auto* hipodromo = w.findChild<QComboBox*>("hipodromo");
        hipodromo->setFocus();
        QTest::keyClick(hipodromo, Qt::Key_Return);
        QTest::keyClicks(QApplication::focusWidget(), "2");
        QCOMPARE(w.findChild<QComboBox*>("carrera")->currentText(), QString("2"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), w.findChild<QCheckBox*>("ganadores"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), w.findChild<QPushButton*>("abrir"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QCOMPARE(banderas(2, 1), (Banderas{1, 1, 0, 0, 1}));
        QCOMPARE(w.marcas()[1].ganadores, QColor(0, 192, 0));
        QCOMPARE(w.marcas()[1].tablaFija, QColor(0, 192, 0));
        QCOMPARE(w.marcas()[1].remate, QColor(192, 0, 0));
        grab(&w, "Form_AbrirCerrar");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!w.isVisible());
    }
};

QTEST_MAIN(TstAbrirCerrar)
#include "tst_abrircerrar.moc"
