// The auction board engine on every layout: loading (once, also from two
// machines at a time), the closed race, every cell with its refusals, the
// totals with the house rounding rule, invalidation and scratching, the pot
// commands, the percentage change, the read-only partner, two machines on one
// race, and the printed pieces with their figures.
#include "core/Claves.h"
#include "core/Cipher.h"
#include "core/Formato.h"
#include "subastas/Subasta.h"
#include "support/TestEnv.h"

#include <QtTest>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

const QString kCentro = QStringLiteral("LOS PINOS");

// A second machine: its own connection, dialogs and session.
struct Maquina {
    ScriptedDialogs dialogs;
    FixedClock reloj;
    Context ctx;
    Maquina(const TestEnv& env) : ctx(env.config, dialogs, reloj) {
        ctx.cnServidor = env.connect();
        ctx.session = env.ctx.session;
    }
};

}  // namespace

class TstSubastas : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString fecha;

    Db& db() { return env->db(); }
    ScriptedDialogs& dlg() { return env->dialogs; }
    Subasta tablero(const QString& nombre = "Form_Subasta_2T") { return Subasta(env->ctx, *disenoSubasta(nombre)); }
    void grupo(const std::string& set) { db().exec("update grupos set " + set + " where grupo='08'"); }
    double celda(const QString& columna, int caballo) {
        return numberOf(db(), ("SELECT " + columna + " FROM carreras_remate WHERE fecha = ? AND carrera = 1 AND ch = ? "
                                                     "AND nu_caballo = ?")
                                  .toStdString(),
                        {fecha, kCentro, caballo});
    }
    QString texto(const QString& columna, int caballo) {
        return textOf(db(), ("SELECT " + columna + " FROM carreras_remate WHERE fecha = ? AND carrera = 1 AND ch = ? "
                                                   "AND nu_caballo = ?")
                                .toStdString(),
                      {fecha, kCentro, caballo});
    }
    long long filas() { return contar(db(), "carreras_remate"); }
    QStringList fotoSubasta() { return foto(db(), {"carreras_remate", "grupos"}); }
    void esperar(const QString& titulo, const QString& texto) {
        QVERIFY(dlg().count() > 0);
        QCOMPARE(dlg().last().title, titulo);
        QCOMPARE(dlg().last().text, texto);
    }
    // The worked race of the slips: sale 1000 (500 and 200 on table 1, 300
    // bought by the house on table 2), pot 100.
    void carreraDeEjemplo(Subasta& s) {
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 1), Subasta::Estado::Abierta);
        QVERIFY(s.escribirMonto(0, 1, "500"));
        QVERIFY(s.escribirComprador(0, 1, "12"));
        QVERIFY(s.escribirMonto(1, 1, "200"));
        QVERIFY(s.escribirComprador(1, 1, "7"));
        QVERIFY(s.escribirMonto(1, 2, "300"));
        QVERIFY(s.escribirComprador(1, 2, "casa"));
        QVERIFY(s.escribirPote("100"));
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("subastas", true);
        env->loadDemo();
        fecha = fechaSql(env->clock.today());
    }

    void init() {
        db().exec("DELETE FROM carreras_remate");
        db().exec("update grupos set por_remate=20, por_rematador=5, tablazo=50, tablaz1=10, tablaz2=10, tablaz3=0, "
                  "tablaz4=0, redondear=0, minimo_remate=500, doblaje=0, mensajech=''");
        db().exec("update configuracion set venta_remate=1");
        db().exec("update carreras set venta_rm = (carrera = 1)");
        db().exec("delete from usuarios where usuario='gerente08'");
        env->signIn("remate");
        dlg().clear();
    }
    void cleanup() { cerrarDialogos(dlg()); }

    void laCargaCreaLasFilasUnaVez() {
        Subasta s = tablero();
        QCOMPARE(s.carreras("LA RINCONADA"), QStringList{"1"});
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 1), Subasta::Estado::Abierta);
        QCOMPARE(filas(), 8LL);
        QCOMPARE(s.lineas().size(), 8);
        QCOMPARE(s.lineas()[0].caballo, QString("RELAMPAGO"));
        QCOMPARE(celda("porcentaje", 3), 20.0);
        QCOMPARE(texto("ch", 3), kCentro);
        // Loading again, on either auction, writes no second set.
        QCOMPARE(s.CargarCarreraTablita("LA RINCONADA", 1), Subasta::Estado::Abierta);
        QCOMPARE(Subasta(env->ctx, *disenoSubasta("Form_Subasta_3T")).CargarCarrera("LA RINCONADA", 1),
                 Subasta::Estado::Abierta);
        QCOMPARE(filas(), 8LL);
        // The stamp follows the group's percentage.
        grupo("por_remate=15");
        s.CargarCarrera("LA RINCONADA", 1);
        QCOMPARE(celda("porcentaje", 8), 15.0);
    }

    void cargasSimultaneas() {
        std::vector<std::unique_ptr<Maquina>> maquinas;
        for (int i = 0; i < 4; ++i) maquinas.push_back(std::make_unique<Maquina>(*env));
        std::vector<std::thread> hilos;
        std::atomic<int> abiertas{0};
        for (auto& m : maquinas)
            hilos.emplace_back([&m, &abiertas] {
                Subasta s(m->ctx, *disenoSubasta("Form_Subasta_2T"));
                if (s.CargarCarrera("LA RINCONADA", 1) == Subasta::Estado::Abierta && s.lineas().size() == 8) ++abiertas;
            });
        for (auto& h : hilos) h.join();
        QCOMPARE(abiertas.load(), 4);
        QCOMPARE(filas(), 8LL);
    }

    void carreraCerrada_data() {
        QTest::addColumn<QString>("cerrar");
        QTest::newRow("closed for auction on the card") << "update carreras set venta_rm=0 where carrera=1";
        QTest::newRow("auctions of the day closed") << "update configuracion set venta_remate=0";
    }
    void carreraCerrada() {
        QFETCH(QString, cerrar);
        db().exec(cerrar.toStdString());
        Subasta s = tablero();
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 1), Subasta::Estado::Cerrada);
        QCOMPARE(filas(), 0LL);
        QVERIFY(s.soloLectura());
        QVERIFY(!s.escribirPote("10"));
        esperar(kTituloSubasta, "CERRADO");
    }

    void carreraQueNoExiste() {
        Subasta s = tablero();
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 12), Subasta::Estado::SinCarrera);
        esperar(kTituloSubasta, "EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
        QCOMPARE(filas(), 0LL);
    }

    void cadaCeldaSeEscribeSola() {
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(2, 1, "1500,50"));
        QCOMPARE(celda("tabla1", 3), 1500.5);
        QVERIFY(s.escribirComprador(2, 2, "c"));
        QCOMPARE(texto("mesa2", 3), QString("casa"));
        QVERIFY(s.escribirTablaCasa(2, "40"));
        QCOMPARE(celda("tablacasa", 3), 40.0);
        QVERIFY(s.escribirPote("75,5"));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras_remate WHERE pote = 75.5"), 8.0);
        // The small board writes its own columns.
        s.MostrarCarrera(true);
        QVERIFY(s.escribirMonto(2, 3, "20"));
        QVERIFY(s.escribirTablaCasa(2, "5"));
        QVERIFY(s.escribirPote("9"));
        QVERIFY(!s.escribirMonto(2, 1, "99"));  // not a table of the small board
        QCOMPARE(celda("tabla3", 3), 20.0);
        QCOMPARE(celda("tablacasa2", 3), 5.0);
        QCOMPARE(celda("pote2", 3), 9.0);
        QCOMPARE(celda("tabla1", 3), 1500.5);
        QCOMPARE(celda("tablacasa", 3), 40.0);
        // An empty amount clears the bid.
        s.MostrarCarrera(false);
        QVERIFY(s.escribirMonto(2, 1, ""));
        QCOMPARE(celda("tabla1", 3), 0.0);
    }

    void entradaMala_data() {
        QTest::addColumn<QString>("campo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("mensaje");
        const QString monto = "EL MONTO NO ES VALIDO";
        const QString comprador = "EL CODIGO DEL COMPRADOR NO ES VALIDO";
        QTest::newRow("letters") << "monto" << "12a" << monto;
        QTest::newRow("two commas") << "monto" << "1,2,5" << monto;
        QTest::newRow("negative") << "monto" << "-5" << monto;
        QTest::newRow("huge") << "monto" << "99999999999" << monto;
        QTest::newRow("house table with letters") << "casa" << "x1" << monto;
        QTest::newRow("pot negative") << "pote" << "-1" << monto;
        QTest::newRow("buyer with a quote") << "comprador" << "O'BRIEN" << comprador;
        QTest::newRow("buyer with a statement") << "comprador" << "1;DROP" << comprador;
        QTest::newRow("buyer too long") << "comprador" << "ABCDEFGHIJKLMNOP" << comprador;
    }
    void entradaMala() {
        QFETCH(QString, campo);
        QFETCH(QString, valor);
        QFETCH(QString, mensaje);
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(0, 1, "100"));
        QVERIFY(s.escribirComprador(0, 1, "12"));
        const QStringList antes = fotoSubasta();
        bool escrito = true;
        if (campo == "monto") escrito = s.escribirMonto(0, 1, valor);
        else if (campo == "casa") escrito = s.escribirTablaCasa(0, valor);
        else if (campo == "pote") escrito = s.escribirPote(valor);
        else escrito = s.escribirComprador(0, 1, valor);
        QVERIFY(!escrito);
        esperar(kTituloSubasta, mensaje);
        QCOMPARE(dlg().last().icon, Icon::Critical);
        QCOMPARE(fotoSubasta(), antes);
    }

    void totales_data() {
        QTest::addColumn<QStringList>("montos");
        QTest::addColumn<int>("tablaz1");
        QTest::addColumn<int>("redondear");
        QTest::addColumn<double>("comision");
        QTest::addColumn<double>("premio");
        QTest::newRow("bids 100 and 50") << QStringList{"100", "50"} << 10 << 0 << 30.0 << 110.0;
        QTest::newRow("deduction above the pool") << QStringList{"100", "50"} << 200 << 0 << 30.0 << 0.0;
        QTest::newRow("12.4 rounds to 12") << QStringList{"62"} << 10 << 1 << 12.0 << 40.0;
        QTest::newRow("12.45 rounds to 13") << QStringList{"62,25"} << 10 << 1 << 13.0 << 39.25;
        QTest::newRow("12.05 rounds to 13") << QStringList{"60,25"} << 10 << 1 << 13.0 << 37.25;
        QTest::newRow("12.05 unrounded") << QStringList{"60,25"} << 10 << 0 << 12.05 << 38.2;
    }
    void totales() {
        QFETCH(QStringList, montos);
        QFETCH(int, tablaz1);
        QFETCH(int, redondear);
        QFETCH(double, comision);
        QFETCH(double, premio);
        db().exec("update grupos set tablaz1=?, redondear=? where grupo='08'", {tablaz1, redondear});
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        for (int i = 0; i < montos.size(); ++i) QVERIFY(s.escribirMonto(i, 1, montos[i]));
        QVERIFY(s.escribirComprador(0, 1, "999"));
        const TotalesSubasta t = s.Calcular();
        QCOMPARE(t.tablas.size(), 2);
        QCOMPARE(t.tablas[0].comision, comision);
        QVERIFY(qFuzzyCompare(1 + t.tablas[0].premio, 1 + premio));
        QCOMPARE(t.tablas[1].total, 0.0);
        QCOMPARE(t.casaJugado, s.lineas()[0].montos[0]);
        QVERIFY(!t.desborde);
    }

    void comisionQueNoCabeAlRedondear() {
        grupo("redondear=1");
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(0, 1, "200000"));
        dlg().clear();
        TotalesSubasta t = s.Calcular();
        QVERIFY(t.desborde);
        QCOMPARE(t.tablas[0].comision, 40000.0);
        esperar(kTituloSubasta, "LA COMISION ES DEMASIADO GRANDE PARA REDONDEARLA: SE MUESTRA SIN REDONDEAR");
        // Told once, not on every refresh.
        s.Calcular();
        QCOMPARE(dlg().count(), 1);
        QVERIFY(s.escribirMonto(0, 1, "100"));
        QVERIFY(!s.Calcular().desborde);
    }

    void invalidarYDeshacer_data() {
        QTest::addColumn<QString>("tablero");
        QTest::addColumn<QString>("marca");
        QTest::newRow("two tables") << "Form_Subasta_2T" << "INV";
        QTest::newRow("800 wide") << "Form_Subasta_2T_800" << "INVALIDADO";
        QTest::newRow("international") << "Form_SubastaINT_2T" << "INVALIDADO";
    }
    void invalidarYDeshacer() {
        QFETCH(QString, tablero);
        QFETCH(QString, marca);
        Subasta s(env->ctx, *disenoSubasta(tablero));
        s.CargarCarrera("LA RINCONADA", 1);
        for (int linea : {1, 2})
            for (int t : {1, 2}) {
                QVERIFY(s.escribirMonto(linea, t, "100"));
                QVERIFY(s.escribirComprador(linea, t, "12"));
            }
        db().exec("update carreras_remate set tablacasa=7, tabla3=5");
        s.refrescar();
        QVERIFY(s.invalidar(2));
        QCOMPARE(celda("tabla1", 3) + celda("tabla2", 3), 0.0);
        QCOMPARE(texto("mesa1", 3), marca);
        QCOMPARE(texto("mesa2", 3), marca);
        QCOMPARE(celda("tablacasa", 3), tablero == "Form_SubastaINT_2T" ? 7.0 : 0.0);  // no house table there
        QCOMPARE(celda("invalidado", 3), 1.0);
        QCOMPARE(celda("tabla3", 3), 5.0);  // the small board keeps its bid
        QCOMPARE(s.lineas()[2].estado, QString("INVALIDADO"));
        QCOMPARE(celda("tabla1", 2), 100.0);  // the other horses keep theirs
        QCOMPARE(texto("mesa2", 2), QString("12"));
        // Undone: the line counts again, its bids stay cleared.
        QVERIFY(s.invalidar(2));
        QCOMPARE(celda("invalidado", 3), 0.0);
        QCOMPARE(celda("tabla1", 3), 0.0);
        QCOMPARE(texto("mesa1", 3), marca);
        QCOMPARE(s.lineas()[2].estado, QString());
        // The small board has its own flag.
        s.MostrarCarrera(true);
        QVERIFY(s.invalidar(2));
        QCOMPARE(celda("invalidado2", 3), 1.0);
        QCOMPARE(celda("tabla3", 3), 0.0);
        QCOMPARE(celda("invalidado", 3), 0.0);
    }

    void retirarLimpiaAmbasTablas() {
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        for (int t : {1, 2}) QVERIFY(s.escribirMonto(4, t, "80"));
        s.MostrarCarrera(true);
        for (int t : {3, 4}) {
            QVERIFY(s.escribirMonto(4, t, "30"));
            QVERIFY(s.escribirComprador(4, t, "5"));
        }
        QVERIFY(s.escribirMonto(5, 3, "60"));
        QVERIFY(s.retirar(4, true));
        for (int t = 1; t <= 4; ++t) {
            QCOMPARE(celda(QString("tabla%1").arg(t), 5), 0.0);
            QCOMPARE(texto(QString("mesa%1").arg(t), 5), QString());
        }
        QCOMPARE(celda("retirado", 5), 1.0);
        QCOMPARE(s.lineas()[4].estado, QString("RETIRADO"));
        QCOMPARE(celda("tabla3", 6), 60.0);
        QVERIFY(s.retirar(4, false));
        QCOMPARE(celda("retirado", 5), 0.0);
    }

    void tresTablasAnulaLaLineaVendida() {
        Subasta s = tablero("Form_Subasta_3T");
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(0, 3, "40"));
        QVERIFY(s.retirar(0, true));
        QCOMPARE(celda("retirado", 1), 2.0);
        for (int t = 1; t <= 5; ++t) QCOMPARE(texto(QString("mesa%1").arg(t), 1), QString("INVALIDADO"));
        QCOMPARE(celda("tabla3", 1), 0.0);
        QCOMPARE(s.lineas()[0].estado, QString("INVALIDADO"));
        // A line nobody bought is simply scratched.
        QVERIFY(s.retirar(1, true));
        QCOMPARE(celda("retirado", 2), 1.0);
        QCOMPARE(texto("mesa1", 2), QString());
    }

    void redondearElPote() {
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        dlg().type("1250,5");
        QVERIFY(s.RedondearRemate());
        QCOMPARE(dlg().shown()[0].title, QString("REDONDEAR REMATE"));
        QCOMPARE(dlg().shown()[0].text, QString("Ingrese el monto final"));
        QCOMPARE(celda("pote", 1), 1250.5);
        dlg().type("mil");
        QVERIFY(!s.RedondearRemate());
        QCOMPARE(celda("pote", 1), 1250.5);
        esperar(kTituloSubasta, "EL MONTO NO ES VALIDO");
    }

    void pagoMinimo() {
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(0, 1, "200"));
        QVERIFY(s.escribirMonto(1, 2, "100"));
        QVERIFY(s.escribirPote("40"));
        dlg().yes().type("1");
        QVERIFY(s.AplicarPagoMinimo());
        QCOMPARE(dlg().shown()[0].title, QString("confirmar"));
        QCOMPARE(dlg().shown()[0].text, QString(" ¿Esta seguro de querer aplicar el pago minimo a la Subasta?"));
        QCOMPARE(dlg().shown()[1].title, QString("APLICAR EL PAGO MINIMO A LA SUBASTA"));
        QCOMPARE(dlg().shown()[1].text, QString("Ingrese el numero de la carrera"));
        esperar("APLICAR MINIMO A LA SUBASTA", "Los cambios fuero hechos con exito");
        // Minimum 500 over a sale of 300: the pot rises by 200 on every row.
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras_remate WHERE pote = 240"), 8.0);
        // On the small board the big board's pot plus the difference goes to pote2.
        s.MostrarCarrera(true);
        dlg().clear();
        dlg().yes().type("1");
        QVERIFY(s.AplicarPagoMinimo());
        QCOMPARE(celda("pote2", 1), 440.0);
        QCOMPARE(celda("pote", 1), 240.0);
        // A sale that reaches the minimum changes nothing.
        grupo("minimo_remate=100");
        dlg().clear();
        dlg().yes().type("1");
        QVERIFY(!s.AplicarPagoMinimo());
        QCOMPARE(celda("pote", 1), 240.0);
        // Refused or cancelled, nothing is written.
        dlg().clear();
        dlg().no();
        QVERIFY(!s.AplicarPagoMinimo());
        dlg().yes().type("x");
        QVERIFY(!s.AplicarPagoMinimo());
        esperar("APLICAR EL PAGO MINIMO A LA SUBASTA", "EL NUMERO DE CARRERA NO ES VALIDO");
        QCOMPARE(celda("pote", 1), 240.0);
        // Boards without it refuse it.
        QVERIFY(!tablero("Form_Subasta_4T").AplicarPagoMinimo());
    }

    void doblaje() {
        grupo("doblaje=50");
        Subasta s = tablero("Form_Subasta_4T");
        s.CargarCarrera("LA RINCONADA", 1);
        for (int t = 1; t <= 4; ++t) QVERIFY(s.escribirMonto(0, t, "100"));
        QVERIFY(s.escribirPote("10"));
        dlg().type("1");
        QVERIFY(s.AplicarDoblaje());
        QCOMPARE(dlg().shown()[0].title, QString("APLICAR EL DOBLAJE A LA SUBASTA"));
        esperar("DOBLAJE DE LA SUBASTA", "Los cambios fuero hechos con exito");
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras_remate WHERE pote = 210"), 8.0);
        QVERIFY(!s.AplicarPagoMinimo());
    }

    void cambioDePorcentaje_data() {
        QTest::addColumn<QString>("clave");
        QTest::addColumn<bool>("aceptada");
        QTest::addColumn<int>("forma");  // how the manager's password is stored
        const int cifrada = int(FormaClave::Cifrada), hash = int(FormaClave::Argon2id);
        QTest::newRow("the manager's password") << "clave08" << true << cifrada;
        QTest::newRow("another password") << "clave09" << false << cifrada;
        QTest::newRow("empty") << "" << false << cifrada;
        QTest::newRow("the manager's password, hashed") << "clave08" << true << hash;
        QTest::newRow("another password, hashed") << "clave09" << false << hash;
    }
    void cambioDePorcentaje() {
        QFETCH(QString, clave);
        QFETCH(bool, aceptada);
        QFETCH(int, forma);
        db().exec("INSERT INTO usuarios (usuario, clave, nombre, nivel, grupo, ch) VALUES ('gerente08', ?, 'G', "
                  "'Gerente', '08', 'LOS PINOS')",
                  {guardarClave("clave08", FormaClave(forma))});
        Subasta s = tablero();
        s.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(s.escribirMonto(0, 1, "100"));
        const QStringList antes = fotoSubasta();
        dlg().type(clave);
        if (aceptada) dlg().type("12,5");
        QCOMPARE(s.CambiarPorcentaje(), aceptada);
        QCOMPARE(dlg().shown()[0].title, QString("Seguridad del Sistema"));
        QCOMPARE(dlg().shown()[0].text, QString("Ingrese la clave de seguridad "));
        if (!aceptada) {
            esperar("Seguridad del Sistema", "LA CLAVE NO ES CORRECTA");
            QCOMPARE(fotoSubasta(), antes);
            QCOMPARE(env->ctx.session.porRemate, QString("20"));
            return;
        }
        QCOMPARE(dlg().shown()[1].title, QString("Cambio de Porcentaje"));
        QCOMPARE(dlg().shown()[1].text, QString("Ingrese el porcentaje del remate "));
        esperar("Modificacion de Parametros", "Los cambios se han hecho con exito");
        QCOMPARE(numberOf(db(), "SELECT por_remate FROM grupos WHERE grupo='08'"), 12.5);
        QCOMPARE(numberOf(db(), "SELECT por_remate FROM grupos WHERE grupo='07'"), 20.0);
        QCOMPARE(env->ctx.session.porRemate, QString("12.5"));
        QCOMPARE(celda("porcentaje", 4), 12.5);
        QCOMPARE(s.Calcular().tablas[0].comision, 12.5);
    }

    void elSocioSoloMira() {
        tablero().CargarCarrera("LA RINCONADA", 1);
        env->signIn("socio");
        Subasta s = tablero();
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 1), Subasta::Estado::Abierta);
        QCOMPARE(s.lineas().size(), 8);
        QVERIFY(s.soloLectura());
        const QStringList antes = fotoSubasta();
        QVERIFY(!s.escribirMonto(0, 1, "100"));
        QVERIFY(!s.escribirComprador(0, 1, "12"));
        QVERIFY(!s.escribirTablaCasa(0, "1"));
        QVERIFY(!s.escribirPote("5"));
        QVERIFY(!s.invalidar(0));
        QVERIFY(!s.retirar(0, true));
        QVERIFY(!s.RedondearRemate());
        QVERIFY(!s.AplicarPagoMinimo());
        QVERIFY(!s.CambiarPorcentaje());
        QVERIFY(!s.enviarMensaje("hola"));
        QVERIFY(!s.Impresora(ImpresoSubasta::Boleto));
        QCOMPARE(dlg().count(), 0);
        QCOMPARE(fotoSubasta(), antes);
        // Nor does a partner's first look create the rows.
        db().exec("DELETE FROM carreras_remate");
        s.CargarCarrera("LA RINCONADA", 1);
        QCOMPARE(filas(), 0LL);
    }

    void cadaTableroCargaYTotaliza_data() {
        QTest::addColumn<QString>("tablero");
        for (const DisenoSubasta& d : disenosSubasta()) QTest::newRow(qPrintable(d.nombre)) << d.nombre;
    }
    void cadaTableroCargaYTotaliza() {
        QFETCH(QString, tablero);
        const DisenoSubasta& d = *disenoSubasta(tablero);
        Subasta s(env->ctx, d);
        QCOMPARE(s.CargarCarrera("LA RINCONADA", 1), Subasta::Estado::Abierta);
        QCOMPARE(s.lineas().size(), 8);
        for (bool tablita : {false, true}) {
            if (tablita && !d.dosSubastas()) continue;
            s.MostrarCarrera(tablita);
            const LadoSubasta& lado = d.lado(tablita);
            for (int t : lado.tablas) {
                QVERIFY(s.escribirMonto(0, t, QString::number(100 * t)));
                QVERIFY(s.escribirComprador(0, t, "12"));
                QVERIFY(s.escribirMonto(3, t, "50"));
            }
            QCOMPARE(s.escribirTablaCasa(3, "25"), !lado.tablaCasa.isEmpty());
            const TotalesSubasta tot = s.Calcular();
            QCOMPARE(tot.tablas.size(), lado.tablas.size());
            for (const TotalTabla& t : tot.tablas) {
                const double total = 100 * t.tabla + 50;
                QCOMPARE(t.total, total);
                QCOMPARE(t.comision, total * 0.2);
                QCOMPARE(t.premio, total * 0.8 - (t.tabla <= 2 ? 10 : 0));
            }
            QCOMPARE(tot.casaJugado, lado.tablaCasa.isEmpty() ? 0.0 : 25.0);
            QCOMPARE(s.lineas()[0].mesas, QVector<QString>(lado.tablas.size(), "12"));
        }
        // Its reports are kinds the report launcher knows.
        for (int tipo : {d.reporteCarrera, d.reporteFinal})
            QVERIFY(reporteSubasta(tipo) && reporteSubasta(tipo)->plantilla.startsWith("\\Reportes\\Subasta\\"));
        QCOMPARE(d.reporteCarreraTP != 0, d.dosSubastas());
        // Every piece the board prints comes out with its title and the day's figures.
        for (ImpresoSubasta cual : d.impresos) {
            const Impreso p = s.impreso(cual);
            QCOMPARE(p.lineas.first(), Subasta::tituloImpreso(d, cual));
            QVERIFY(p.lineas.size() > 4);
        }
    }

    void dosMaquinasUnaCarrera() {
        Maquina otra(*env);
        Subasta a = tablero();
        Subasta b(otra.ctx, *disenoSubasta("Form_Subasta_2T"));
        a.CargarCarrera("LA RINCONADA", 1);
        b.CargarCarrera("LA RINCONADA", 1);
        QVERIFY(!b.refrescar());
        QVERIFY(a.escribirMonto(0, 1, "300"));
        QVERIFY(b.refrescar());
        QCOMPARE(b.lineas()[0].montos[0], 300.0);
        QCOMPARE(b.Calcular().tablas[0].total, 300.0);
        // Each writes its own cell without reading the other's first: both stay.
        QVERIFY(b.escribirComprador(0, 1, "44"));
        QVERIFY(a.escribirMonto(1, 2, "120"));
        QCOMPARE(texto("mesa1", 1), QString("44"));
        QCOMPARE(celda("tabla1", 1), 300.0);
        QCOMPARE(celda("tabla2", 2), 120.0);
        // Totals come from what the database holds once the board has read it.
        QCOMPARE(b.Calcular().tablas[1].total, 0.0);
        QVERIFY(b.refrescar());
        QCOMPARE(b.Calcular().tablas[1].total, 120.0);
        // The message line travels the same way.
        QVERIFY(a.enviarMensaje("ULTIMA LLAMADA CARRERA 1"));
        QVERIFY(b.refrescar());
        QCOMPARE(b.mensaje(), QString("ULTIMA LLAMADA CARRERA 1"));
        // Closing the race closes the other board too.
        db().exec("update carreras set venta_rm=0 where carrera=1");
        QVERIFY(b.refrescar());
        QCOMPARE(b.estado(), Subasta::Estado::Cerrada);
    }

    void celdasEscritasALaVez() {
        Maquina m1(*env), m2(*env);
        Subasta a(m1.ctx, *disenoSubasta("Form_Subasta_2T"));
        Subasta b(m2.ctx, *disenoSubasta("Form_Subasta_2T"));
        a.CargarCarrera("LA RINCONADA", 1);
        b.CargarCarrera("LA RINCONADA", 1);
        std::thread ta([&a] {
            for (int vez = 1; vez <= 15; ++vez)
                for (int linea = 0; linea < 8; ++linea) a.escribirMonto(linea, 1, QString::number(vez * 10 + linea));
        });
        std::thread tb([&b] {
            for (int vez = 1; vez <= 15; ++vez)
                for (int linea = 0; linea < 8; ++linea) b.escribirComprador(linea, 2, QString("M%1").arg(vez));
        });
        ta.join();
        tb.join();
        for (int caballo = 1; caballo <= 8; ++caballo) {
            QCOMPARE(celda("tabla1", caballo), 150.0 + caballo - 1);
            QCOMPARE(texto("mesa2", caballo), QString("M15"));
        }
    }

    void boletoDeLaCarrera() {
        Subasta s = tablero();
        carreraDeEjemplo(s);
        const QStringList esperado = {"BOLETO REMATE",
                                      "CENTRO HIPICO LOS PINOS",
                                      "FECHA: 23-11-2026",
                                      "HORA: 10:30:00",
                                      "Carrera 1",
                                      "Venta: $1,000.00",
                                      "Porcentaje: 20",
                                      "Casa Jugado: $300.00",
                                      "Casa Ganado: $0.00",
                                      "Premios: $850.00",
                                      "Tablazo: $50.00",
                                      "Pote: $100.00",
                                      "Cab Ganador: 0",
                                      "Porcentaje de la Jugada: $200.00",
                                      "Monto para la Casa: $0.00",
                                      "Ganancia: -$200.00"};
        QCOMPARE(s.impreso(ImpresoSubasta::Boleto).lineas, esperado);
        QCOMPARE(celda("monto_casa", 1), 0.0);
        // The house bought the winner on table 2: it takes that table's pool
        // and its half of the pot less the deduction, stored before printing.
        db().exec("update carreras_remate set win=2");
        const QStringList lineas = s.impreso(ImpresoSubasta::Boleto).lineas;
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras_remate WHERE monto_casa = 265"), 8.0);
        QCOMPARE(lineas.mid(8, 1), QStringList{"Casa Ganado: $265.00"});
        QCOMPARE(lineas.mid(12, 1), QStringList{"Cab Ganador: 2"});
        QCOMPARE(lineas.mid(14), (QStringList{"Monto para la Casa: $265.00", "Ganancia: $65.00"}));
    }

    void reporteFinalDelDia() {
        Subasta s = tablero();
        carreraDeEjemplo(s);
        const QStringList lineas = s.impreso(ImpresoSubasta::FinalDia).lineas;
        QCOMPARE(lineas.first(), QString("RPT REMATE FINAL"));
        QCOMPARE(lineas.mid(1, 1), QStringList{"CENTRO HIPICO LOS PINOS"});
        QCOMPARE(lineas.mid(lineas.size() - 6),
                 (QStringList{"Venta Final: $1,000.00", "Casa Jugado Final: $300.00", "Casa Ganado Final: $0.00",
                              "Ganancia Final: -$200.00", "Tablazo Final: $50.00", "Por Rematador: -$10.00"}));
        QVERIFY(lineas.contains("Premios: $850.00"));
        // The day's figures reach the report tables of this machine.
        env->ctx.session.confLocal.impresion = 0;
        QVERIFY(s.Impresora(ImpresoSubasta::FinalDia));
        Db& local = env->local();
        QCOMPARE(numberOf(local, "SELECT count(*) FROM rpt_diarioremate"), 8.0);
        QCOMPARE(numberOf(local, "SELECT venta FROM rpt_diariorematefinal"), 1000.0);
        QCOMPARE(numberOf(local, "SELECT ganancia FROM rpt_diariorematefinal"), -200.0);
        QCOMPARE(numberOf(local, "SELECT premios FROM rpt_diariorematefinal"), 850.0);
        QCOMPARE(numberOf(local, "SELECT casa2 FROM rpt_diarioremate WHERE numero = 2"), 300.0);
        QCOMPARE(numberOf(local, "SELECT t1 FROM rpt_diarioremate WHERE numero = 5"), 700.0);
        QCOMPARE(textOf(local, "SELECT group_concat(jugador, '=', monto ORDER BY jugador) FROM rpt_jugadores_remate"),
                 QString("12=500,7=200,casa=300"));
    }

    void piezasPorTabla() {
        grupo("tablaz3=5");
        Subasta s = tablero("Form_Subasta_5T");
        s.CargarCarrera("LA RINCONADA", 1);
        for (int t = 1; t <= 5; ++t) QVERIFY(s.escribirMonto(0, t, "100"));
        const QStringList boleto = s.impreso(ImpresoSubasta::Boleto).lineas;
        QVERIFY(boleto.contains("Premio T(1): $80.00"));
        QVERIFY(boleto.contains("Premio T(5): $80.00"));
        QVERIFY(boleto.contains("PREMIO TOTAL : $350.00"));  // 500 - 100 + 0 - 50
        QCOMPARE(s.Calcular().tablas[2].premio, 75.0);
        QCOMPARE(s.impreso(ImpresoSubasta::FinalDia).lineas.first(), QString("  RPT REMATE FINAL"));
        Subasta tres = tablero("Form_Subasta_3T");
        tres.CargarCarrera("LA RINCONADA", 1);
        const QStringList reporte = tres.impreso(ImpresoSubasta::ReporteRemate).lineas;
        QCOMPARE(reporte.first(), QString("REPORTE REMATE"));
        QVERIFY(reporte.contains("1T: $100.00"));
        QVERIFY(reporte.contains("3T: $100.00"));
        QVERIFY(!reporte.contains("4T: $100.00"));  // table 4 is the small board's
        QCOMPARE(tres.impreso(ImpresoSubasta::FinalTP).lineas.first(), QString("     REPORTE FINAL TP"));
        QVERIFY(tres.impreso(ImpresoSubasta::FinalTP).lineas.contains("Venta Final: $200.00"));
        db().exec("update carreras_remate set mesa1='12', mesa4='casa', win=1");
        const QStringList ganadores = tres.impreso(ImpresoSubasta::GanadoresRemate).lineas;
        QVERIFY(ganadores.contains("1T: 12  $80.00"));
        QVERIFY(ganadores.contains("2T: -"));
        QVERIFY(ganadores.contains("4T: casa  $80.00"));
        const QStringList jugado = tres.impreso(ImpresoSubasta::JugadoRemate).lineas;
        QCOMPARE(jugado.first(), QString("JUGADO REMATE"));
        QVERIFY(jugado.contains("12              $100.00"));
        QCOMPARE(jugado.last(), QString("Total: $200.00"));
    }

    void elBoletoSeVeImpreso() {
        Subasta s = tablero();
        carreraDeEjemplo(s);
        const QImage imagen = imagenImpreso(s.impreso(ImpresoSubasta::Boleto), 8, false);
        QVERIFY(!imagen.isNull());
        QVERIFY(imagen.height() > 300);
        QString carpeta = qEnvironmentVariable("HIPICO_SCREENS");
        if (carpeta.isEmpty()) carpeta = QDir::current().absoluteFilePath("screens");
        QDir().mkpath(carpeta);
        QVERIFY(imagen.save(QDir(carpeta).filePath("BOLETO_REMATE.png")));
    }
};

QTEST_MAIN(TstSubastas)
#include "tst_subastas.moc"
