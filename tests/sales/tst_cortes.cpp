// The booth when its network is cut at the worst moment, through a relay
// that drops the connection at a COMMIT: a sale whose commit reached the
// server is found by its token, printed and told; one that never reached it
// is told as not sold; a payment likewise. With the server out of reach the
// sale stays to be settled, and is settled before the next one. The window
// keeps what was typed and says it once.
#include "BoothFixture.h"

#include "core/Connections.h"
#include "core/Guardia.h"
#include "sales/Form_Venta_WIN.h"
#include "support/CorteRed.h"

#include <QApplication>
#include <QLineEdit>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

Q_DECLARE_METATYPE(hipico::test::CorteRed::Corte)

namespace {

const QString kConexion = "CONEXION CON EL SERVIDOR";
const QString kVendida = "SE PERDIO LA CONEXION CON EL SERVIDOR, PERO LA VENTA SE REALIZO. BOLETO: ";
const QString kNoVendida = "SE PERDIO LA CONEXION CON EL SERVIDOR: LA VENTA NO SE REALIZO, NO SE VENDIO NINGUN BOLETO";

}  // namespace

class TstCortes : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    std::unique_ptr<CorteRed> red;
    std::shared_ptr<Db> directo;  // the test's own look at the server, not through the relay
    QTemporaryDir carpeta;
    QString puerto;

    long long boletos() { return Row::toInteger(directo->scalar("SELECT count(*) FROM ma_principal")); }
    // How many tickets the printer received.
    int impresos() { return int(leerPuerto(puerto).count("VENTA GANADORES")); }
    void unaCaja(Icon icono, const QString& texto) {
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(int(env->dialogs.last().icon), int(icono));
        QCOMPARE(env->dialogs.last().title, kConexion);
        QCOMPARE(env->dialogs.last().text, texto);
    }
    // The two places of the cut, and whether the server kept the work.
    static void dondeSeCorta(const char* guardado) {
        QTest::addColumn<CorteRed::Corte>("corte");
        QTest::addColumn<bool>(guardado);
        QTest::newRow("answer lost") << CorteRed::Corte::TrasCommit << true;
        QTest::newRow("commit lost") << CorteRed::Corte::AntesCommit << false;
    }
    // Every stored ticket has its code and its sale keys.
    void boletosCompletos() {
        for (const Row& b : directo->query("SELECT * FROM ma_principal")) {
            QVERIFY(!b.text("nu_boleto").isEmpty());
            QCOMPARE(int(verificarBoleto(b, std::nullopt)), int(Alteracion::Ninguna));
        }
    }

private slots:
    void initTestCase() {
        env = entorno("cortes", carpeta.path());
        puerto = carpeta.filePath("boletos.prn");
        red = std::make_unique<CorteRed>(env->config.servidor.puerto);
    }

    void init() {
        empezarDia(*env, puerto);
        directo = env->connect();
        // The booth reaches the server through the relay.
        Config porRed = env->config;
        porRed.servidor.puerto = red->puerto();
        env->ctx.cnServidor = Db::open(cadenaServidor(porRed));
        red->alcanzable(true);
    }

    void cleanup() {
        red->cortarEnCommit(CorteRed::Corte::Ninguno);
        cerrarDialogos(env->dialogs);
    }

    void ventaCortada_data() { dondeSeCorta("guardada"); }
    // The connection breaks at the sale's COMMIT: the booth finds out by the
    // token and says so once; a ticket is printed exactly when it is stored.
    void ventaCortada() {
        QFETCH(CorteRed::Corte, corte);
        QFETCH(bool, guardada);
        VentaGanadores v = ventaCargada(env->ctx);
        red->cortarEnCommit(corte);
        const auto r = v.procesarVenta("1", "3", "4");
        QVERIFY(red->cortado());
        QVERIFY(!v.ventaIncierta());
        QCOMPARE(boletos(), guardada ? 1LL : 0LL);
        QCOMPARE(impresos(), guardada ? 1 : 0);
        boletosCompletos();
        if (guardada) {
            QCOMPARE(int(r.resultado), int(VentaGanadores::Resultado::Vendido));
            QCOMPARE(textOf(*directo, "SELECT nu_boleto FROM ma_principal"), r.boleto.codigo);
            QVERIFY(leerPuerto(puerto).contains("BOLETO: " + r.boleto.codigo));
            unaCaja(Icon::Information, kVendida + r.boleto.codigo);
        } else {
            QCOMPARE(int(r.resultado), int(VentaGanadores::Resultado::Rechazado));
            unaCaja(Icon::Critical, kNoVendida);
        }
        // The booth sells on as before.
        env->dialogs.clear();
        QCOMPARE(int(v.procesarVenta("1", "2", "1").resultado), int(VentaGanadores::Resultado::Vendido));
        QCOMPARE(boletos(), guardada ? 2LL : 1LL);
        QVERIFY(env->dialogs.shown().isEmpty());
    }

    void ventaSinServidor_data() { dondeSeCorta("guardada"); }
    // The server stays out of reach after the cut: the sale cannot be looked
    // up, the booth says the connection failed and prints nothing; the next
    // sale, once the server answers, settles it first.
    void ventaSinServidor() {
        QFETCH(CorteRed::Corte, corte);
        QFETCH(bool, guardada);
        VentaGanadores v = ventaCargada(env->ctx);
        red->cortarEnCommit(corte, true);
        QVERIFY(!intentar(env->ctx, "Form_Venta_WIN", [&] { return v.procesarVenta("1", "3", "4"); }));
        QVERIFY(red->cortado());
        QVERIFY(v.ventaIncierta());
        QCOMPARE(impresos(), 0);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().text, kMensajeConexion);
        QCOMPARE(boletos(), guardada ? 1LL : 0LL);
        // Still out of reach: still unknown, still nothing printed.
        env->dialogs.clear();
        QVERIFY(!intentar(env->ctx, "Form_Venta_WIN", [&] { return v.procesarVenta("1", "3", "4"); }));
        QVERIFY(v.ventaIncierta());
        QCOMPARE(impresos(), 0);
        // The server answers: the same typed sale is pressed again.
        red->alcanzable(true);
        env->dialogs.clear();
        const auto r = v.procesarVenta("1", "3", "4");
        QVERIFY(!v.ventaIncierta());
        QCOMPARE(int(r.resultado), int(VentaGanadores::Resultado::Vendido));
        // Stored: that ticket is the customer's, and no second one is sold.
        // Absent: this press sells it.
        QCOMPARE(boletos(), 1LL);
        QCOMPARE(impresos(), 1);
        QCOMPARE(textOf(*directo, "SELECT nu_boleto FROM ma_principal"), r.boleto.codigo);
        if (guardada)
            unaCaja(Icon::Information, kVendida + r.boleto.codigo);
        else
            QVERIFY(env->dialogs.shown().isEmpty());
        boletosCompletos();
    }

    void cobroCortado_data() { dondeSeCorta("pagado"); }
    // A payment cut at its COMMIT: the ticket's status tells the booth.
    void cobroCortado() {
        QFETCH(CorteRed::Corte, corte);
        QFETCH(bool, pagado);
        VentaGanadores v = ventaCargada(env->ctx);
        const QString codigo = v.procesarVenta("1", "3", "4").boleto.codigo;
        liquidar(*directo, fechaTrabajo(env->ctx), 1, 3, 12.5);
        QVERIFY(v.buscarBoletoCobro(codigo).pagable);
        red->cortarEnCommit(corte);
        QCOMPARE(v.cobrarBoleto(), pagado);
        QVERIFY(red->cortado());
        QCOMPARE(Row::toInteger(directo->scalar("SELECT estatus FROM ma_principal")), pagado ? 2LL : 1LL);
        QCOMPARE(leerPuerto(puerto).contains("COBRO DE JUGADA GANADORES"), pagado);
        unaCaja(pagado ? Icon::Information : Icon::Critical,
                pagado ? "SE PERDIO LA CONEXION CON EL SERVIDOR, PERO EL BOLETO QUEDO PAGADO"
                       : "SE PERDIO LA CONEXION CON EL SERVIDOR: EL BOLETO NO SE PAGO");
    }

    // The window: the server out of reach when the sale is pressed. One
    // message, and what was typed stays; pressed again once the server
    // answers, it sells.
    void ventanaConservaLoTecleado() {
        Form_Venta_WIN w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.show();
        QApplication::setActiveWindow(&w);
        QVERIFY(QTest::qWaitForWindowActive(&w));
        auto* caballo = w.findChild<QLineEdit*>("Text_Caballo");
        auto* monto = w.findChild<QLineEdit*>("Text_Monto");
        caballo->setText("3");
        monto->setText("4");
        env->dialogs.clear();
        red->alcanzable(false);
        // From the server the relay leads to: a cluster node knows only its own connections.
        Db::open(cadenaServidor(env->config))->exec("KILL CONNECTION " +
                      std::to_string(Row::toInteger(env->db().scalar("SELECT CONNECTION_ID()"))));
        w.Boton_Procesar_Click();
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, kConexion);
        QCOMPARE(env->dialogs.last().text, kMensajeConexion);
        QCOMPARE(caballo->text(), QString("3"));
        QCOMPARE(monto->text(), QString("4"));
        QCOMPARE(boletos(), 0LL);
        red->alcanzable(true);
        env->dialogs.clear();
        w.Boton_Procesar_Click();
        QVERIFY(env->dialogs.shown().isEmpty());
        QCOMPARE(boletos(), 1LL);
        QCOMPARE(impresos(), 1);
        QVERIFY(monto->text().isEmpty());
    }
};

QTEST_MAIN(TstCortes)
#include "tst_cortes.moc"
