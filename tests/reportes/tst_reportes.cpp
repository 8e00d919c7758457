// The report pipeline: the 40 kinds and the ticket window's two, each
// template opened against its filled table; parameters handed over by name;
// the rendered PDF read back with pdftotext (title, column heads on every
// page, a known total, "Página 1 de N"); the CSV and spreadsheet exports read
// back; a missing or malformed template told by name; pictures of a few
// reports to look at.
#include "reportes/Exportar.h"
#include "reportes/Lanzador.h"
#include "reportes/RPT_Diario_WIN.h"
#include "reportes/Reporte.h"
#include "reportes/TiposReporte.h"
#include "support/TestEnv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

namespace {

// A command's standard output (pdftotext, unzip).
QString salida(const QString& programa, const QStringList& argumentos) {
    QProcess p;
    p.start(programa, argumentos);
    if (!p.waitForFinished(60000) || p.exitCode() != 0) return QStringLiteral("<falló %1>").arg(programa);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The texts of a spreadsheet's first sheet, cell by cell ("A1" -> text), strings inline.
QMap<QString, QString> celdasXlsx(const QString& archivo) {
    QMap<QString, QString> celdas;
    QXmlStreamReader xml(salida("unzip", {"-p", archivo, "xl/worksheets/sheet1.xml"}));
    QString celda;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("c")) celda = xml.attributes().value("r").toString();
        if (xml.isStartElement() && (xml.name() == QLatin1String("v") || xml.name() == QLatin1String("t")))
            celdas[celda] = xml.readElementText();
    }
    return celdas;
}

}  // namespace

class TstReportes : public QObject {
    Q_OBJECT
    QTemporaryDir carpeta;  // exports and the test's own templates
    std::unique_ptr<TestEnv> env;

    // The weekly booth summary's table with `n` booths of a day each.
    void llenarTaquillas(int n) {
        env->local().exec("DELETE from rpt_resultadostaqs");
        env->local().exec("INSERT INTO rpt_resultadostaqs (ch, fecha, jugado, cobrado, total, taquilla, monto_porpagar) "
                          "SELECT CONCAT('TAQUILLA ', LPAD(seq, 3, '0')), '23-11-2026', 100 * seq, 10 * seq, 85 * seq, "
                          "CONCAT('TAQUILLA ', LPAD(seq, 3, '0')), 5 * seq FROM seq_1_to_" + std::to_string(n));
    }

    Documento reporte(int tipo, const ParametrosReporte& p = {}) { return prepararReporte(env->ctx, *solicitudGeneral(tipo, p)); }

    // A template of our own, in the test's own templates folder.
    void plantillaPropia(const QString& relativa, const QByteArray& xml) {
        const QString archivo = carpeta.filePath(relativa);
        QDir().mkpath(QFileInfo(archivo).absolutePath());
        QFile f(archivo);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(xml);
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("reportes", true);
        env->loadDemo();
        env->signIn("admin");
    }

    void init() { env->ctx.config.carpetaReportes.clear(); }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void tiposDeReporte_data() {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("plantilla");
        QTest::addColumn<QString>("tabla");
        QTest::addColumn<bool>("parametros");
        struct T {
            int tipo;
            const char* titulo;
            const char* plantilla;
            const char* tabla;
        };
        const T tipos[] = {
            {1, "REPORTE VENTA GANADORES", "\\Reportes\\Ganadores\\diario.rpt", "rpt_diario"},
            {2, "REPORTE VENTA TABLA FIJA", "\\Reportes\\TablaFija\\diario.rpt", "rpt_diario"},
            {3, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera.rpt", "rpt_diarioremate"},
            {4, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\diario.rpt", "rpt_diariorematefinal"},
            {5, "REPORTE DIVIDENDOS", "\\Reportes\\Ganadores\\dividendos.rpt", "rpt_dividendos"},
            {6, "REPORTE GENERAL", "\\Reportes\\Ganadores\\General.rpt", "rpt_general"},
            {7, "REPORTE RESULTADOS CARRERAS", "\\Reportes\\Ganadores\\resultados_carreras.rpt", "rpt_resultadoscarreras"},
            {8, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera2.rpt", "rpt_diarioremate"},
            {9, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB.rpt", "rpt_diarioremate"},
            {10, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\diario_TB.rpt", "rpt_diariorematefinal"},
            {11, "REPORTE FINAL - SUBASTA", "\\Reportes\\Subasta\\General.rpt", "rpt_diariorematefinal"},
            {12, "REPORTE FINAL - GANADORES", "\\Reportes\\Ganadores\\Ganadores.rpt", "rpt_resultadoscarreras"},
            {13, "REPORTE COMBINACIONES MACUARE", "\\Reportes\\Macuare\\rpt_macuare.rpt", "rpt_macuare"},
            {14, "REPORTE DIARIO MACUARE", "\\Reportes\\Macuare\\Resumen_Diario.rpt", "rpt_diario_mc"},
            {15, "REPORTE SEMANAL MACUARE", "\\Reportes\\Macuare\\Resumen_Semanal.rpt", "rpt_diario_mc"},
            {16, "TICKETS - GANADORES", "\\Reportes\\Ganadores\\bitacora_ganadores.rpt", "rpt_bitacora"},
            {17, "REPORTE GENERAL - GANADORES", "\\Reportes\\Ganadores\\semanal.rpt", "rpt_diario"},
            {18, "RESUMEN VENTA TAQUILLAS - GANADORES", "\\Reportes\\Ganadores\\resultados_taq.rpt", "rpt_resultadostaqs"},
            {19, "RESUMEN GENERAL - TABLA FIJA", "\\Reportes\\TablaFija\\semanal.rpt", "rpt_diario"},
            {20, "RESUMEN VENTA TAQUILLAS - TABLA FIJA", "\\Reportes\\TablaFija\\resultados_taq.rpt", "rpt_resultadostaqs"},
            {21, "REPORTE RESULTADOS CARRERAS TABLA FIJA", "\\Reportes\\TablaFija\\resultados_carreras.rpt",
             "rpt_resultadoscarreras"},
            {22, "TICKETS - TABLA FIJA ", "\\Reportes\\TablaFija\\bitacora_tickets.rpt", "rpt_bitacora"},
            {23, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera5.rpt", "rpt_diarioremate"},
            {24, "REPORTE POR CARRERA - TABLA FIJA", "\\Reportes\\TablaFija\\carrera.rpt", "rpt_caballos_tf"},
            {25, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB2.rpt", "rpt_diarioremate"},
            {26, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_TB2_V2.rpt", "rpt_diarioremate"},
            {27, "RESUMEN GANANCIA - TABLA FIJA", "\\Reportes\\TablaFija\\Todos_Por.rpt", "rpt_diario"},
            {28, "RESUMEN GANANCIA - TABLA FIJA", "\\Reportes\\TablaFija\\Todos_Por2.rpt", "rpt_diario"},
            {29, "REPORTE GENERAL VARIOS", "\\Reportes\\Ganadores\\Generalv.rpt", "rpt_general"},
            {30, "REPORTE VENTA TABLA DINAMICA", "\\Reportes\\Dinamicas\\diario.rpt", "rpt_diario"},
            {31, "RESUMEN GENERAL - TABLA DINAMICA", "\\Reportes\\Dinamicas\\semanal.rpt", "rpt_diario"},
            {32, "REPORTE VENTA PUESTOS", "\\Reportes\\Puestos\\diario.rpt", "rpt_diario"},
            {33, "RESUMEN GENERAL - PUESTOS", "\\Reportes\\Puestos\\semanal.rpt", "rpt_diario"},
            {34, "REPORTE RESULTADOS CARRERAS", "\\Reportes\\Ganadores\\resultados_carrerast.rpt", "rpt_resultadoscarreras"},
            {35, "REPORTE POR CARRERA - SUBASTA", "\\Reportes\\Subasta\\carrera_3TB.rpt", "rpt_diarioremate"},
            {36, "REPORTE VENTA MACUARE", "\\Reportes\\Macuare\\diario.rpt", "rpt_diario"},
            {37, "REPORTE VENTA MACUARE", "\\Reportes\\Macuare\\Semanal.rpt", "rpt_diario"},
            {38, "REPORTE VENTA SUBASTA", "\\Reportes\\Subasta\\General_Subasta.rpt", "rpt_general"},
            {39, "REPORTE JUGADAS DEL CLIENTE", "\\Reportes\\Ganadores\\JugadasClientes.rpt", "rpt_jugadas_clientes"},
            {40, "REPORTE SEMANAL POR TAQUILLA", "\\Reportes\\Ganadores\\resultados_taqs.rpt", "rpt_resultadostaqs"},
        };
        for (const T& t : tipos)
            QTest::newRow(qPrintable(QString::number(t.tipo)))
                << t.tipo << QString(t.titulo) << QString(t.plantilla) << QString(t.tabla) << (t.tipo == 40);
    }

    // Each kind: its caption (kinds that share one differ by template), its
    // template, whether the general window hands it the parameters, and its
    // report opens against its table filled with two rows of defaults.
    void tiposDeReporte() {
        QFETCH(int, tipo);
        QFETCH(QString, titulo);
        QFETCH(QString, plantilla);
        QFETCH(QString, tabla);
        QFETCH(bool, parametros);
        const TipoReporte* t = tipoReporte(tipo);
        QVERIFY(t);
        QCOMPARE(t->titulo, titulo);
        QCOMPARE(t->plantilla, plantilla);
        QCOMPARE(t->parametros, parametros);
        QCOMPARE(solicitudGeneral(tipo, {"X", 7})->parametros.has_value(), parametros);

        env->local().exec(("DELETE FROM `" + tabla + "`").toStdString());
        env->local().exec(("INSERT INTO `" + tabla + "` () VALUES (), ()").toStdString());
        QWidget* ventana = abrirReporte(env->ctx, tipo, {"X", 7});
        QVERIFY2(ventana, qPrintable(env->dialogs.texts().join(" | ")));
        QCOMPARE(env->dialogs.count(), 0);
        QCOMPARE(ventana->windowTitle(), titulo);
        QCOMPARE(ventana->objectName(), QString("RPT_Diario_WIN"));
        auto* r = qobject_cast<RPT_Diario_WIN*>(ventana);
        QCOMPARE(r->documento().plantilla().tabla, tabla);
        QCOMPARE(r->documento().filas().size(), 2);
        delete ventana;
    }

    void fueraDeLaTablaNoAbreNada() {
        QVERIFY(!abrirReporte(env->ctx, 0));
        QVERIFY(!abrirReporte(env->ctx, 41));
        QVERIFY(!abrirReporteBoletos(env->ctx, 3, {}));
        QCOMPARE(env->dialogs.count(), 0);
    }

    // The ticket window: kind 1 and 2 open the ticket lists' templates, each
    // with both parameters handed over.
    void ventanaDeBoletos() {
        env->local().exec("DELETE FROM rpt_jugadas");
        env->local().exec("INSERT INTO rpt_jugadas () VALUES ()");
        for (const auto& [tipo, archivo] : {std::pair{1, "Ganadores/Jugadas.rpt"}, std::pair{2, "TablaFija/Jugadas.rpt"}}) {
            QWidget* w = abrirReporteBoletos(env->ctx, tipo, {"CARRERA 3 - TODAS", 3});
            QVERIFY(w);
            QCOMPARE(w->objectName(), QString("RPT_Jugadas_WIN"));
            const Documento& d = qobject_cast<RPT_Diario_WIN*>(w)->documento();
            QVERIFY(d.plantilla().archivo.endsWith(archivo));
            QVERIFY(d.encabezado().contains("BUSQUEDA: CARRERA 3 - TODAS     CARRERA: 3"));
            delete w;
        }
    }

    // The parameter fields are walked in the template's order by name; a
    // field of another name keeps its value.
    void parametrosPorNombre() {
        plantillaPropia("Ganadores/resultados_taqs.rpt", R"(<reporte>
  <datos tabla="rpt_resultadostaqs"/>
  <parametro nombre="Parametro2" tipo="entero" etiqueta="B"/>
  <parametro nombre="Otro" etiqueta="C" valor="fijo"/>
  <parametro nombre="Parametro1" etiqueta="A"/>
  <linea>[{Parametro1}] [{Parametro2}] [{Otro}]</linea>
  <columna campo="taquilla" titulo="TAQUILLA"/>
</reporte>)");
        env->ctx.config.carpetaReportes = carpeta.path();
        llenarTaquillas(1);
        const Documento d = reporte(40, {"DEL 16-11-2026 AL 22-11-2026", 47});
        QCOMPARE(d.encabezado(), (QStringList{"[DEL 16-11-2026 AL 22-11-2026] [47] [fijo]",
                                              "B: 47     C: fijo     A: DEL 16-11-2026 AL 22-11-2026"}));
    }

    // The weekly booth summary as a PDF, read back: title, company, the
    // parameters, the heads on every page, the grand total, and the pages.
    void pdfLeidoDeVuelta() {
        llenarTaquillas(60);  // 60 booths of one day: more than a page
        const Documento d = reporte(40, {"DEL 17-11-2026 AL 23-11-2026", 47});
        QVERIFY(d.paginas() >= 2);
        const QString pdf = QDir(qEnvironmentVariable("HIPICO_SCREENS", QDir::currentPath())).filePath("semanal.pdf");
        QVERIFY(exportarPdf(d, pdf));
        const QString primera = salida("pdftotext", {"-layout", "-f", "1", "-l", "1", pdf, "-"});
        QVERIFY2(primera.contains("REPORTE SEMANAL POR TAQUILLA"), qPrintable(primera));
        QVERIFY(primera.contains("RED DE CENTROS HIPICOS"));
        QVERIFY(primera.contains("DEL 17-11-2026 AL 23-11-2026"));
        QVERIFY(primera.contains("SEMANA: 47"));
        QVERIFY(primera.contains("Impreso: 23-11-2026 10:30:00"));
        QVERIFY(primera.contains(QString("Página 1 de %1").arg(d.paginas())));
        const QString ultima =
            salida("pdftotext", {"-layout", "-f", QString::number(d.paginas()), "-l", QString::number(d.paginas()), pdf, "-"});
        for (const char* cabeza : {"FECHA", "JUGADO", "PAGADO", "POR PAGAR", "TOTAL"}) QVERIFY(ultima.contains(cabeza));
        // 100 + 200 + ... + 6000 played; 85 x 1830 in total.
        QVERIFY2(ultima.contains("TOTAL DE LA SEMANA"), qPrintable(ultima));
        QVERIFY(ultima.contains("Bs. 183.000,00"));
        QVERIFY(ultima.contains("Bs. 155.550,00"));
        QVERIFY(ultima.contains(QString("Página %1 de %1").arg(d.paginas())));
    }

    void csvYHojaDeCalculo() {
        llenarTaquillas(3);
        const Documento d = reporte(18);
        const QString csv = carpeta.filePath("taquillas.csv");
        QVERIFY(exportarCsv(d, csv));
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray bytes = f.readAll();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));  // a spreadsheet reads it as UTF-8
        QCOMPARE(QString::fromUtf8(bytes.mid(3)).split("\r\n", Qt::SkipEmptyParts),
                 (QStringList{"TAQUILLA,JUGADO,PAGADO,POR PAGAR,TOTAL", "TAQUILLA 001,100.00,10.00,5.00,85.00",
                              "TAQUILLA 002,200.00,20.00,10.00,170.00", "TAQUILLA 003,300.00,30.00,15.00,255.00"}));

        const QString xlsx = carpeta.filePath("taquillas.xlsx");
        QVERIFY(exportarXlsx(d, xlsx));
        const auto celdas = celdasXlsx(xlsx);
        QCOMPARE(celdas.value("A1"), QString("RESUMEN VENTA TAQUILLAS - GANADORES"));
        QCOMPARE(celdas.value("A2"), QString("RED DE CENTROS HIPICOS"));
        // Title, company, the date line, the print time, a blank row, then the heads.
        QCOMPARE(celdas.value("A3"), QString("FECHA: 23-11-2026"));
        QCOMPARE(celdas.value("B6"), QString("JUGADO"));
        QCOMPARE(celdas.value("A7"), QString("TAQUILLA 001"));
        QCOMPARE(celdas.value("B9"), QString("300"));
        QCOMPARE(celdas.value("A10"), QString("TOTAL"));
        QCOMPARE(celdas.value("B10"), QString("600"));
        QCOMPARE(celdas.value("E10"), QString("510"));
    }

    void plantillaDefectuosa_data() {
        QTest::addColumn<QByteArray>("xml");  // empty: no file at all
        QTest::addColumn<QString>("detalle");
        QTest::newRow("missing") << QByteArray() << "NO SE ENCONTRO LA PLANTILLA DEL REPORTE";
        QTest::newRow("broken xml") << QByteArray("<reporte><datos tabla=\"rpt_general\"></reporte>")
                                    << "LA PLANTILLA DEL REPORTE NO ES VALIDA";
        QTest::newRow("unknown format")
            << QByteArray("<reporte><datos tabla=\"rpt_general\"/><columna campo=\"ch\" formato=\"DD/MM\"/></reporte>")
            << "formato desconocido \"DD/MM\"";
        QTest::newRow("unknown field")
            << QByteArray("<reporte><datos tabla=\"rpt_general\"/><columna campo=\"chx\"/></reporte>")
            << "la tabla rpt_general no tiene el campo chx";
        QTest::newRow("unknown element")
            << QByteArray("<reporte><datos tabla=\"rpt_general\"/><columnas/></reporte>") << "elemento desconocido <columnas>";
        QTest::newRow("no columns") << QByteArray("<reporte><datos tabla=\"rpt_general\"/></reporte>")
                                    << "el reporte no tiene ninguna <columna>";
        QTest::newRow("sql in a name")
            << QByteArray("<reporte><datos tabla=\"rpt_general; DROP TABLE x\"/><columna campo=\"ch\"/></reporte>")
            << "no es un nombre de campo";
    }

    // A missing or malformed template: one message naming the file, nothing opens.
    void plantillaDefectuosa() {
        QFETCH(QByteArray, xml);
        QFETCH(QString, detalle);
        QTemporaryDir otra;
        env->ctx.config.carpetaReportes = otra.path();
        const QString archivo = otra.filePath("Ganadores/Generalv.rpt");
        if (!xml.isEmpty()) {
            QDir().mkpath(otra.filePath("Ganadores"));
            QFile f(archivo);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(xml);
        }
        QVERIFY(!abrirReporte(env->ctx, 29));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, kTituloPlantilla);
        QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        QVERIFY2(env->dialogs.last().text.contains(archivo), qPrintable(env->dialogs.last().text));
        QVERIFY2(env->dialogs.last().text.contains(detalle), qPrintable(env->dialogs.last().text));
    }

    // The preview: one page on screen, paging, exports from its buttons.
    void vistaPrevia() {
        llenarTaquillas(60);
        auto* w = qobject_cast<RPT_Diario_WIN*>(abrirReporte(env->ctx, 18));
        QVERIFY(w);
        QCOMPARE(w->findChild<QLabel*>("Pagina")->text(), QString("Página 1 de %1").arg(w->documento().paginas()));
        QTest::keyClick(w, Qt::Key_PageDown);
        QCOMPARE(w->pagina(), 1);
        w->irA(99);
        QCOMPARE(w->pagina(), w->documento().paginas() - 1);
        const QString archivo = carpeta.filePath("desde_la_vista");
        w->pedirArchivo = [&](const QString&, const QString&) { return archivo; };
        QTest::mouseClick(w->findChild<QPushButton*>("Boton_Excel"), Qt::LeftButton);
        QVERIFY(QFile::exists(archivo + ".xlsx"));
        QVERIFY(!w->exportar(RPT_Diario_WIN::Formato::Pdf, "/no/existe/x.pdf"));
        QCOMPARE(env->dialogs.last().text, QString("NO SE PUDO GUARDAR EL ARCHIVO:\n/no/existe/x.pdf"));
        env->dialogs.clear();
        grab(w, "RPT_Diario_WIN_vista");
        delete w;
    }

    // Pictures of a few reports' first pages, to look at.
    void retratos() {
        llenarTaquillas(12);
        for (int tipo : {18, 40}) {
            const Documento d = reporte(tipo, {"DEL 17-11-2026 AL 23-11-2026", 47});
            QString folder = qEnvironmentVariable("HIPICO_SCREENS", QDir::current().absoluteFilePath("screens"));
            QDir().mkpath(folder);
            QVERIFY(imagenPagina(d, 0, 110).save(QDir(folder).filePath(QString("reporte_%1.png").arg(tipo))));
        }
    }
};

QTEST_MAIN(TstReportes)
#include "tst_reportes.moc"
