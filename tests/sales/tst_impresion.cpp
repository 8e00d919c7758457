// Tickets on paper: the exact lines of each piece in each mode, the bytes a
// raw printer receives, the shared queue through the printing system, the
// graphic ticket rendered and its barcode scanned back, the four barcode
// symbologies, and the print settings window.
#include "BoothFixture.h"

#include "sales/Barcode.h"
#include "sales/ConfImpresion.h"
#include "sales/Form_ConfImpresion.h"
#include "sales/Tickets.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

namespace {

// What a standard scanner reads off a picture (zbar), "" when nothing.
QString escanear(const QString& png) {
    QProcess p;
    p.start("zbarimg", {"-q", "--raw", png});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

// A pattern drawn as the booth draws it (spaces 1.3 times wider), or with
// plain spaces, on white with quiet zones.
QImage dibujar(const QString& patron, double ensanche, double modulo = 3) {
    double ancho = 0;
    for (int i = 0; i < patron.size(); ++i) ancho += patron[i].digitValue() * modulo * (i % 2 ? ensanche : 1.0);
    QImage img(int(ancho) + 120, 180, QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p(&img);
    double x = 60;
    for (int i = 0; i < patron.size(); ++i) {
        const double w = patron[i].digitValue() * modulo;
        if (i % 2 == 0) p.fillRect(QRectF(x, 30, w, 120), Qt::black);
        x += i % 2 == 0 ? w : w * ensanche;
    }
    return img;
}

DatosBoleto boleto() {
    DatosBoleto d;
    d.centro = "LOS PINOS";
    d.taquilla = "taquilla1";
    d.fecha = "2026-11-23";
    d.hora = "10:30:00";
    d.codigo = "0711231000";
    d.hipodromo = "LA RINCONADA";
    d.carrera = 1;
    d.caballo = 3;
    d.nombreCaballo = "NIÑO MIMADO";
    d.ganadores = 2.5;
    d.costo = 25;
    d.diasValidez = 3;
    d.imprimirDatos = true;
    d.empresa = "AGENCIA 07";
    d.rif = "J-40000000-1";
    return d;
}

const QString kEstrellas(40, '*');
const QString kGuiones(61, '-');

}  // namespace

class TstImpresion : public QObject {
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void barcodePatterns_data() {
        QTest::addColumn<QString>("simbologia");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("patron");
        // Start B, "A" (value 33), check (104 + 33) mod 103 = 34, stop.
        QTest::newRow("128 A") << "128" << "A" << "211214" "111323" "131123" "2331112";
        // "0" is 16, "7" is 23: check (104 + 16 + 2*23) mod 103 = 63.
        QTest::newRow("128 07") << "128" << "07" << "211214" "123122" "312131" "111224" "2331112";
        QTest::newRow("39 A, framed by *") << "39" << "a" << "131131311" "1" "311113113" "1" "131131311";
        QTest::newRow("2/5 odd length gets a leading 0") << "2/5" << "123"
                                                         << "1111" "1311313113" "1333111131" "311";
        QTest::newRow("2/5 even length") << "2/5" << "01" << "1111" "1311313113" "311";
        QTest::newRow("Codabar framed by A") << "Codabar" << "12"
                                             << "1133131" "1" "1111331" "1" "1113113" "1" "1133131";
        QTest::newRow("Codabar with its own start/stop") << "Codabar" << "b1d"
                                                         << "1313113" "1" "1111331" "1" "1113331";
        QTest::newRow("128 outside code set B") << "128" << "Ñ" << "";
        QTest::newRow("2/5 letters") << "2/5" << "12A" << "";
        QTest::newRow("39 unknown character") << "39" << "A#" << "";
        QTest::newRow("Codabar unknown character") << "Codabar" << "1X2" << "";
        QTest::newRow("unknown symbology") << "EAN" << "123" << "";
    }
    void barcodePatterns() {
        QFETCH(QString, simbologia);
        QFETCH(QString, texto);
        QFETCH(QString, patron);
        QCOMPARE(patronBarras(texto, simbologia), patron);
    }

    void code128TableIsTheStandardOne() {
        QSet<QString> vistos;
        for (int c = 32; c < 128; ++c) {
            const QString p = patronCode128(QString(QChar(c)));
            QCOMPARE(p.size(), 6 + 6 + 6 + 7);
            const QString simbolo = p.mid(6, 6);
            int suma = 0;
            for (QChar d : simbolo) suma += d.digitValue();
            QCOMPARE(suma, 11);
            vistos.insert(simbolo);
        }
        QCOMPARE(vistos.size(), 96);
        QVERIFY(patronCode128("x").endsWith("2331112"));
    }

    void spacesAreWiderThanBars() {
        QCOMPARE(anchoPatron("11", 2), 2 + 2 * 1.3);
        QImage img(400, 20, QImage::Format_RGB32);
        img.fill(Qt::white);
        {
            QPainter p(&img);
            QCOMPARE(dibujarCodigoBarras(p, "A", "128", 10, 0, 10, 20), anchoPatron(patronCode128("A"), 10));
        }
        // Runs of the start symbol "211214": bars 20, 10, 10; spaces 13, 26, 52.
        QVector<int> corridas;
        bool negro = true;
        int n = 0;
        for (int x = 10; x < 400 && corridas.size() < 6; ++x) {
            const bool esNegro = qGray(img.pixel(x, 10)) < 128;
            if (esNegro == negro) {
                ++n;
            } else {
                corridas << n;
                negro = esNegro;
                n = 1;
            }
        }
        QCOMPARE(corridas, (QVector<int>{20, 13, 10, 26, 10, 52}));
    }

    // A standard scanner (zbar) reads every symbology as the booth draws it.
    void scannerReadsEachSymbology_data() {
        QTest::addColumn<QString>("simbologia");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("leido");
        QTest::newRow("128") << "128" << "0711231000" << "0711231000";
        QTest::newRow("128 letters") << "128" << "Hipico-07" << "Hipico-07";
        QTest::newRow("39") << "39" << "TICKET-07" << "TICKET-07";
        QTest::newRow("2/5") << "2/5" << "711231000" << "0711231000";
        QTest::newRow("Codabar") << "Codabar" << "A0711231000B" << "A0711231000B";
    }
    void scannerReadsEachSymbology() {
        QFETCH(QString, simbologia);
        QFETCH(QString, texto);
        QFETCH(QString, leido);
        for (double ensanche : {1.0, kEnsancheEspacios}) {
            const QString png =
                dir.filePath(QString("%1-%2.png").arg(QString(QTest::currentDataTag()).replace('/', '_')).arg(ensanche));
            QVERIFY(dibujar(patronBarras(texto, simbologia), ensanche).save(png));
            QCOMPARE(escanear(png), leido);
        }
    }

    // The graphic ticket's barcode on a receipt printer: every bar a whole
    // number of dots (a module of two dots at 203 dpi, and at 180), ten
    // modules clear on each side, and a standard scanner reads it back.
    void barcodeOfWholeDots_data() {
        QTest::addColumn<int>("dpi");
        QTest::newRow("203 dpi") << 203;
        QTest::newRow("180 dpi") << 180;
    }
    void barcodeOfWholeDots() {
        QFETCH(int, dpi);
        const int modulo = 2;
        const Impreso i = ticketVenta(boleto(), true);
        const QImage img = imagenImpreso(i, 8, true, dpi);
        const QString png = dir.filePath(QString("ticket-%1.png").arg(dpi));
        QVERIFY(img.save(png));
        QCOMPARE(escanear(png), QString("0711231000"));
        // A row through the bars: just above the lowest black dot of the picture.
        int fondo = img.height() - 1;
        auto negro = [&](int x, int y) { return qGray(img.pixel(x, y)) < 128; };
        auto filaConNegro = [&](int y) {
            for (int x = 0; x < img.width(); ++x)
                if (negro(x, y)) return true;
            return false;
        };
        while (fondo > 0 && !filaConNegro(fondo)) --fondo;
        const int y = fondo - 4;
        QVector<int> barras;
        int primero = -1, ultimo = -1, corrida = 0;
        for (int x = 0; x < img.width(); ++x) {
            if (negro(x, y)) {
                if (primero < 0) primero = x;
                ultimo = x;
                ++corrida;
            } else if (corrida > 0) {
                barras << corrida;
                corrida = 0;
            }
        }
        QVector<int> esperadas;
        const QString patron = patronCode128("0711231000");
        for (int k = 0; k < patron.size(); k += 2) esperadas << patron[k].digitValue() * modulo;
        QCOMPARE(barras, esperadas);
        QVERIFY2(primero >= kZonaSilenciosaModulos * modulo, qPrintable(QString::number(primero)));
        QVERIFY2(img.width() - 1 - ultimo >= kZonaSilenciosaModulos * modulo, qPrintable(QString::number(ultimo)));
    }

    void ticketLines_data() {
        QTest::addColumn<QString>("pieza");
        QTest::addColumn<bool>("grafico");
        QTest::addColumn<QStringList>("lineas");
        QTest::addColumn<QString>("barras");
        const QString caballo = "CABALLO: (3) NIÑO MIMADO";
        const QString jugado = "MONTO JUGADO: 2,5  Ganadores";
        QTest::newRow("sale, raw") << "venta" << false
                                   << QStringList{"    VENTA GANADORES", "AGENCIA 07", "RIF: J-40000000-1", "",
                                                  "CH:LOS PINOS", "TAQ: taquilla1", "F: 23-11-2026H: 10:30:00",
                                                  "BOLETO: 0711231000 C: 1", caballo, jugado,
                                                  "COSTO DEL BOLETO: Bs. 25,00"}
                                   << "";
        QTest::newRow("sale, graphic") << "venta" << true
                                       << QStringList{"   VENTA GANADORES", "AGENCIA 07", "RIF: J-40000000-1",
                                                      "CENTRO HIPICO LOS PINOS", "TAQUILLA: taquilla1 H: 10:30:00",
                                                      "F: 23-11-2026H: 10:30:00", "BOLETO: 0711231000 C: 1", caballo,
                                                      jugado, "COSTO DEL BOLETO: Bs. 25,00"}
                                       << "0711231000";
        QTest::newRow("password path, raw")
            << "clave" << false
            << QStringList{kEstrellas, "       CENTRO HIPICO LOS PINOS", "AGENCIA 07", "RIF: J-40000000-1",
                           "TAQUILLA taquilla1", "JUEGO GANADORES", "FECHA: 23-11-2026", "HORA: 10:30:00",
                           "HIPODROMO: LA RINCONADA", "BOLETO: 0711231000", "CARRERA: 1", caballo, jugado,
                           "MONTO EN BSF: Bs. 25,00", "            MUCHA SUERTE!!!!!!!!      ",
                           "BOLETO CADUCA A LOS 3 Dias"}
            << "";
        QTest::newRow("password path, graphic")
            << "clave" << true
            << QStringList{kGuiones, "  VENTA GANADORES", "AGENCIA 07", "RIF: J-40000000-1", "CENTRO HIPICO LOS PINOS",
                           "TAQUILLA: taquilla1 HORA: 10:30:00", "FECHA: 23-11-2026", "HIPODROMO: LA RINCONADA",
                           "BOLETO: 0711231000", "CARRERA: 1", caballo, jugado, "COSTO DEL BOLETO: Bs. 25,00",
                           "            MUCHA SUERTE!!!!!!!!      ", "BOLETO CADUCA A LOS 3 Dias", kGuiones}
            << "0711231000";
        QTest::newRow("payment slip, raw") << "cobro" << false
                                           << QStringList{"COBRO DE JUGADA GANADORES", "CH: LOS PINOS",
                                                          "FECHA: 23-11-2026", "HORA: 10:30:00", "BOLETO: 0711231000",
                                                          "MONTO COBRADO : Bs. 31,25"}
                                           << "";
        QTest::newRow("payment slip, graphic") << "cobro" << true
                                               << QStringList{"  COBRO DE JUGADA GANADORES", "TAQUILLA: taquilla1",
                                                              "FECHA: 23-11-2026", "HORA: 10:30:00",
                                                              "BOLETO: 0711231000", "MONTO COBRADO : Bs. 31,25"}
                                               << "";
        QTest::newRow("test page") << "prueba" << false
                                   << QStringList{"--- PRUEBA ---", "CENTRO HIPICO LOS PINOS", "TAQUILLA taquilla1",
                                                  "FECHA: 23-11-2026", "HORA: 10:30:00",
                                                  "--------------------------------"}
                                   << "";
    }
    void ticketLines() {
        QFETCH(QString, pieza);
        QFETCH(bool, grafico);
        QFETCH(QStringList, lineas);
        QFETCH(QString, barras);
        Impreso i;
        if (pieza == "venta") i = ticketVenta(boleto(), grafico);
        if (pieza == "clave") i = ticketClave(boleto(), grafico);
        if (pieza == "cobro")
            i = reciboCobro({"LOS PINOS", "taquilla1", "2026-11-23", "10:30:00", "0711231000", 31.25, false}, grafico);
        if (pieza == "prueba") i = paginaPrueba("LOS PINOS", "taquilla1", "2026-11-23", "10:30:00", grafico);
        QCOMPARE(i.lineas, lineas);
        QCOMPARE(i.codigoBarras, barras);
        if (grafico) return;
        // The raw printer receives exactly these lines, then the feed.
        const QString puerto = dir.filePath(pieza + ".prn");
        QFile::remove(puerto);
        ImpresoraPuerto(puerto).imprimir(i);
        QCOMPARE(leerPuerto(puerto), crudo(lineas));
    }

    void dollarsAndWithoutCompanyData() {
        DatosBoleto d = boleto();
        d.enDolares = true;
        d.imprimirDatos = false;
        const QStringList l = ticketVenta(d, false).lineas;
        QCOMPARE(l.first(), QString("    VENTA GANADORES"));
        QCOMPARE(l[1], QString());
        QCOMPARE(l.last(), QString("COSTO DEL BOLETO: $25.00"));
    }

    void rawBytesAreWindows1252AndAppended() {
        const QString puerto = dir.filePath("bytes.prn");
        ImpresoraPuerto p(puerto);
        p.imprimir({{"NIÑO"}, {}, {}});
        p.imprimir({{"A"}, {}, {}});
        QFile f(puerto);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("NI\xD1O\r\n\x1b" "d\x05" "A\r\n\x1b" "d\x05"));
        QVERIFY_THROWS_EXCEPTION(ErrorImpresion, ImpresoraPuerto(dir.filePath("no/existe/lpt")).imprimir({{"x"}, {}, {}}));
    }

    void sharedQueueGoesThroughThePrintingSystem() {
        const LpDePrueba lp(dir.path());
        ConfLocal conf;
        conf.puerto = "WINDOWS:";
        auto impresora = crearImpresora(conf);
        QCOMPARE(int(impresora->modo()), int(ModoImpresora::Compartida));
        const Impreso i = ticketVenta(boleto(), false);
        impresora->imprimir(i);
        QCOMPARE(lp.leer("lp.args"), QString("-d\nX\n-o\nraw\n"));
        QCOMPARE(lp.leer("lp.data"), crudo(i.lineas));
        // A queue that refuses the job is a printing failure with its reason.
        try {
            ImpresoraCompartida("Y").imprimir(i);
            QFAIL("the queue should have refused");
        } catch (const ErrorImpresion& e) {
            QVERIFY(e.motivo().contains("cola desconocida"));
        }
    }

    void graphicTicketScansBack() {
        const Impreso i = ticketVenta(boleto(), true);
        const QString png = dir.filePath("ticket.png");
        QVERIFY(imagenImpreso(i, 8, true).save(png));
        QCOMPARE(escanear(png), QString("0711231000"));
        QVERIFY(imagenImpreso(i, 8, false).save(dir.filePath("sin-barras.png")));
        QCOMPARE(escanear(dir.filePath("sin-barras.png")), QString());
        // Through the printer: QPainter on QPrinter, kept as PDF, then rasterised.
        const QString pdf = dir.filePath("ticket.pdf");
        fijarSalidaPdf(pdf);
        ConfLocal conf;  // "WINDOWS2:", font 8, barcode on
        crearImpresora(conf)->imprimir(i);
        fijarSalidaPdf({});
        QProcess::execute("pdftoppm", {"-r", "300", "-png", "-singlefile", pdf, dir.filePath("pdf")});
        QCOMPARE(escanear(dir.filePath("pdf.png")), QString("0711231000"));
        QProcess texto;
        texto.start("pdftotext", {"-layout", pdf, "-"});
        texto.waitForFinished(30000);
        const QString t = QString::fromUtf8(texto.readAllStandardOutput());
        for (const QString& l : i.lineas) QVERIFY2(t.simplified().contains(l.simplified()), qPrintable(l));
        // Kept beside the window pictures, to look at.
        const QString carpeta = qEnvironmentVariable("HIPICO_SCREENS", QDir::current().absoluteFilePath("screens"));
        QDir().mkpath(carpeta);
        QFile::remove(carpeta + "/ticket_impreso.png");
        QFile::copy(dir.filePath("pdf.png"), carpeta + "/ticket_impreso.png");
    }

    void printSettings() {
        TestEnv env("impresion", true);
        env.config.carpetaLocal = dir.filePath("maquina");
        env.ctx.config.carpetaLocal = env.config.carpetaLocal;
        env.loadDemo();
        env.signIn("taquilla1");
        ConfImpresion c(env.ctx);
        // A new local schema: printing on, graphic mode, font 8, barcodes on.
        const ConfLocal inicial = c.cargar();
        QCOMPARE(inicial.puerto, QString("WINDOWS2:"));
        QCOMPARE(inicial.impresion, 1);
        QCOMPARE(inicial.tamletra, 8);
        QCOMPARE(c.modos().first(), QString("WINDOWS2:"));

        QVERIFY(!c.guardar({"/dev/usb/lp0x", true, 8, true}));
        QCOMPARE(env.dialogs.last().text, QString("EL PUERTO NO PUEDE TENER MAS DE 10 CARACTERES"));
        QVERIFY(!c.guardar({"  ", true, 8, true}));
        QCOMPARE(env.local().query("SELECT puerto FROM conf_local").first().text("puerto"), QString("WINDOWS2:"));

        QVERIFY(c.guardar({"prueba.prn", false, 10, false}));
        QCOMPARE(env.dialogs.last().title, QString("Configuración de Impresión"));
        QCOMPARE(env.dialogs.last().text, QString("Los cambios se han realizado con exito"));
        const Row r = env.local().query("SELECT * FROM conf_local").first();
        QCOMPARE(r.text("puerto"), QString("prueba.prn"));
        QCOMPARE(r.integer("impresion"), 0LL);
        QCOMPARE(r.integer("tamletra"), 10LL);
        QCOMPARE(r.integer("codbarras"), 0LL);
        QCOMPARE(env.ctx.session.confLocal.puerto, QString("prueba.prn"));

        // The test page goes out in the chosen mode even with printing off.
        QFile::remove("prueba.prn");
        QVERIFY(c.imprimirPrueba({"prueba.prn", false, 10, false}));
        QCOMPARE(leerPuerto("prueba.prn"), crudo(paginaPrueba("LOS PINOS", "taquilla1", fechaSql(env.clock.today()),
                                                              "10:30:00", false)
                                                     .lineas));

        // A booth without a local schema keeps the same settings in its own file.
        env.ctx.cnLocal.reset();
        env.config.localBase = env.ctx.config.localBase = "t_no_existe_local";
        QCOMPARE(leerConfImpresion(env.ctx).puerto, QString("prueba.prn"));
        QVERIFY(c.guardar({"LPT1:", true, 9, true}));
        const ConfLocal f = leerConfImpresion(env.ctx);
        QCOMPARE(f.puerto, QString("LPT1:"));
        QCOMPARE(f.impresion, 1);
        QCOMPARE(f.tamletra, 9);
    }

    void printSettingsWindow() {
        TestEnv env("impresionv", true);
        env.config.carpetaLocal = dir.filePath("ventana");
        env.ctx.config.carpetaLocal = env.config.carpetaLocal;
        env.loadDemo();
        env.signIn("taquilla1");
        Form_ConfImpresion w(env.ctx);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        auto* puerto = w.findChild<QComboBox*>("Combo_Puerto");
        auto* imprimir = w.findChild<QComboBox*>("Combo_Imprimir");
        QCOMPARE(puerto->currentText(), QString("WINDOWS2:"));
        QCOMPARE(imprimir->currentText(), QString("SI"));
        puerto->setCurrentText("WINDOWS:");
        imprimir->setCurrentIndex(1);
        w.findChild<QSpinBox*>("Text_TamLetra")->setValue(12);
        grab(&w, "Form_ConfImpresion");
        QTest::mouseClick(w.findChild<QPushButton*>("Boton_Guardar"), Qt::LeftButton);
        QCOMPARE(env.dialogs.last().text, QString("Los cambios se han realizado con exito"));
        const Row r = env.local().query("SELECT * FROM conf_local").first();
        QCOMPARE(r.text("puerto"), QString("WINDOWS:"));
        QCOMPARE(r.integer("impresion"), 0LL);
        QCOMPARE(r.integer("tamletra"), 12LL);

        // A port too long is told as it is typed, and refused when saved.
        QLineEdit* linea = puerto->lineEdit();
        linea->clear();
        QTest::keyClicks(linea, "/dev/lp0");
        QCOMPARE(w.findChild<QLabel*>("avisoPuerto")->text(), QString());
        QTest::keyClicks(linea, "xyz");
        QCOMPARE(w.findChild<QLabel*>("avisoPuerto")->text(), QString("EL PUERTO NO PUEDE TENER MAS DE 10 CARACTERES"));
        // Leaving with changes not saved asks first; "No" (the default) stays.
        env.dialogs.no();
        QTest::keyClick(linea, Qt::Key_Escape);
        QCOMPARE(env.dialogs.last().text, kSalirSinGuardar);
        QVERIFY(env.dialogs.last().noByDefault);
        QVERIFY(w.isVisible());
        env.dialogs.yes();
        QTest::keyClick(linea, Qt::Key_Escape);
        QVERIFY(!w.isVisible());
        QCOMPARE(env.local().query("SELECT puerto FROM conf_local").first().text("puerto"), QString("WINDOWS:"));
        // Nothing changed: Esc leaves without a question.
        Form_ConfImpresion otra(env.ctx);
        otra.show();
        const int antes = env.dialogs.count();
        QTest::keyClick(otra.findChild<QComboBox*>("Combo_Puerto")->lineEdit(), Qt::Key_Escape);
        QVERIFY(!otra.isVisible());
        QCOMPARE(env.dialogs.count(), antes);
    }
};

QTEST_MAIN(TstImpresion)
#include "tst_impresion.moc"
