// The text cipher, the typed-amount rounding, the keystroke filters and the
// amount formats.
#include "core/Cipher.h"
#include "core/Formato.h"
#include "core/FiltrosTecla.h"

#include <QtTest>
#include <stdexcept>

using namespace hipico;

class TstTextos : public QObject {
    Q_OBJECT

private slots:
    void cipherKnownValues_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QString>("cifrado");
        // '1'(49) + '4'(52) + 64 = 165 '¥'; '2' + '9' + 64 = 171 '«'; ...
        QTest::newRow("password") << "1234" << "493027kmzt" << QString::fromUtf8("¥«¦¤");
        QTest::newRow("demo admin") << "admin123" << "493027kmzt" << QString::fromUtf8("ÕÝàÙà¨Ýà");
        // 'z'(122) + 't'(116) + 64 = 302, over 255: 302 - 256 = 46 '.'
        QTest::newRow("wraps past 255") << "z" << "t" << ".";
        QTest::newRow("empty text") << "" << "493027kmzt" << "";
        QTest::newRow("empty key") << "sin clave" << "" << "sin clave";
    }

    void cipherKnownValues() {
        QFETCH(QString, texto);
        QFETCH(QString, clave);
        QFETCH(QString, cifrado);
        QCOMPARE(Encriptar(texto, clave), cifrado);
        QCOMPARE(Desencriptar(cifrado, clave), texto);
    }

    void cipherKeyWalk() {
        // After the first pass the key runs one place ahead of a plain cycle:
        // positions 1..10, then 2..10, 1, then 2...
        const QString clave = "493027kmzt";
        const QString texto(25, QLatin1Char('A'));
        const QString cifrado = Encriptar(texto, clave);
        auto codigo = [&](int pos) { return codigoAnsi(cifrado.at(pos - 1)) - 65 - 64; };
        QCOMPARE(codigo(1), int('4'));
        QCOMPARE(codigo(10), int('t'));
        QCOMPARE(codigo(11), int('9'));  // the key's 2nd character
        QCOMPARE(codigo(19), int('t'));
        QCOMPARE(codigo(20), int('4'));  // the key's 1st character
        QCOMPARE(codigo(21), int('9'));
        QCOMPARE(Desencriptar(cifrado, clave), texto);
    }

    void cipherRoundTripsAsciiTexts() {
        const QStringList claves = {"493027kmzt", "k", "0711154521", "5" + QString("07") + "4521"};
        QString todo;
        for (int c = 0; c < 128; ++c) todo.append(QChar(c));
        for (const QString& clave : claves) {
            for (int largo : {1, 9, 10, 11, 20, 21, 128}) {
                const QString t = todo.left(largo);
                QCOMPARE(Desencriptar(Encriptar(t, clave), clave), t);
                QCOMPARE(Encriptar(t, clave).size(), t.size());
            }
        }
    }

    void cipherRefusesCodesOutsideTheCodePage() {
        // 255 + 255 + 64 - 256 = 318: no such character.
        QVERIFY_THROWS_EXCEPTION(std::range_error, Encriptar(QString(QChar(0xFF)), QString(QChar(0xFF))));
    }

    void windows1252Codes() {
        QCOMPARE(codigoAnsi(QChar(0x20AC)), 0x80);  // €
        QCOMPARE(caracterAnsi(0x80), QChar(0x20AC));
        QCOMPARE(codigoAnsi(QChar(0x0178)), 0x9F);  // Ÿ
        for (int c = 0; c < 256; ++c) QCOMPARE(codigoAnsi(caracterAnsi(c)), c);
    }

    void redondearEntero_data() {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("resultado");
        QTest::newRow("12.4") << "12.4" << "12";
        QTest::newRow("12.5") << "12.5" << "13";
        QTest::newRow("12.05 reads 05 as 5") << "12.05" << "13";
        QTest::newRow("12.49") << "12.49" << "13";
        QTest::newRow("12.04") << "12.04" << "12";
        QTest::newRow("7") << "7" << "7";
        QTest::newRow("7,") << "7," << "7";
        QTest::newRow("7,5") << "7,5" << "8";
        QTest::newRow("second separator dropped") << "12.0.7" << "13";
        QTest::newRow("32767.4") << "32767.4" << "32767";
    }

    void redondearEntero() {
        QFETCH(QString, texto);
        QFETCH(QString, resultado);
        QCOMPARE(RedondearEntero(texto), resultado);
    }

    void redondearEnteroErrors() {
        QVERIFY_THROWS_EXCEPTION(ErrorDesbordamiento, RedondearEntero("40000"));
        QVERIFY_THROWS_EXCEPTION(ErrorDesbordamiento, RedondearEntero("32767.5"));
        QVERIFY_THROWS_EXCEPTION(ErrorTipo, RedondearEntero("12a.5"));
        QVERIFY_THROWS_EXCEPTION(ErrorTipo, RedondearEntero("abc"));
        QVERIFY_THROWS_EXCEPTION(ErrorTipo, RedondearEntero(""));
        QVERIFY_THROWS_EXCEPTION(ErrorTipo, RedondearEntero(",5"));
    }

    void filters_data() {
        QTest::addColumn<int>("filtro");
        QTest::addColumn<int>("codigo");
        QTest::addColumn<int>("resultado");
        enum { Num, NumComa, NumComaGuion, May, Alfa };
        QTest::newRow("digit") << int(Num) << int('7') << int('7');
        QTest::newRow("letter swallowed") << int(Num) << int('a') << 0;
        QTest::newRow("point swallowed") << int(NumComa) << int('.') << 0;
        QTest::newRow("comma in amount") << int(NumComa) << int(',') << int(',');
        QTest::newRow("no comma in number") << int(Num) << int(',') << 0;
        QTest::newRow("backspace") << int(Num) << 8 << 8;
        QTest::newRow("enter") << int(NumComa) << 13 << 13;
        QTest::newRow("dash") << int(NumComaGuion) << int('-') << int('-');
        QTest::newRow("no dash") << int(NumComa) << int('-') << 0;
        QTest::newRow("upper") << int(May) << int('a') << int('A');
        QTest::newRow("upper ñ") << int(May) << 241 << 209;
        QTest::newRow("alfa letter upper") << int(Alfa) << int('q') << int('Q');
        QTest::newRow("alfa digit") << int(Alfa) << int('0') << int('0');
        QTest::newRow("alfa blank") << int(Alfa) << 32 << 32;
        QTest::newRow("alfa !") << int(Alfa) << 33 << 0;
        QTest::newRow("alfa /") << int(Alfa) << 47 << 0;
        QTest::newRow("alfa :") << int(Alfa) << 58 << 0;
        QTest::newRow("alfa @") << int(Alfa) << 64 << 0;
        QTest::newRow("alfa [") << int(Alfa) << 91 << 0;
        QTest::newRow("alfa _") << int(Alfa) << 95 << 0;
        QTest::newRow("alfa backquote") << int(Alfa) << 96 << 96;
        QTest::newRow("alfa {") << int(Alfa) << 123 << 0;
        QTest::newRow("alfa 163") << int(Alfa) << 163 << 0;
        QTest::newRow("alfa 164") << int(Alfa) << 164 << 164;
        QTest::newRow("alfa 165") << int(Alfa) << 165 << 165;
        QTest::newRow("alfa Ñ") << int(Alfa) << 209 << 0;
        QTest::newRow("alfa é") << int(Alfa) << 233 << 0;
        QTest::newRow("alfa 255 upper") << int(Alfa) << 255 << 0x9F;
        QTest::newRow("alfa control") << int(Alfa) << 8 << 8;
    }

    void filters() {
        QFETCH(int, filtro);
        QFETCH(int, codigo);
        QFETCH(int, resultado);
        const FiltroTecla filtros[] = {SoloNumeros, SoloNumerosComa, SoloNumerosComaGuion, Mayusculas,
                                       SoloAlfanumerico};
        QCOMPARE(filtros[filtro](codigo), resultado);
    }

    void formats_data() {
        QTest::addColumn<double>("monto");
        QTest::addColumn<QString>("dolar");
        QTest::addColumn<QString>("moneda");
        QTest::newRow("zero") << 0.0 << "$0.00" << "Bs. 0,00";
        QTest::newRow("cents") << 0.5 << "$0.50" << "Bs. 0,50";
        QTest::newRow("thousands") << 1234.5 << "$1,234.50" << "Bs. 1.234,50";
        QTest::newRow("millions") << 1234567.891 << "$1,234,567.89" << "Bs. 1.234.567,89";
        QTest::newRow("negative") << -1234.5 << "-$1,234.50" << "-Bs. 1.234,50";
        QTest::newRow("rounds half cent") << 2.675 << "$2.68" << "Bs. 2,68";
    }

    void formats() {
        QFETCH(double, monto);
        QFETCH(QString, dolar);
        QFETCH(QString, moneda);
        QCOMPARE(formatoDolar(monto), dolar);
        QCOMPARE(formatoMoneda(monto), moneda);
        QCOMPARE(formatoMonto(monto, true), dolar);
        QCOMPARE(formatoMonto(monto, false), moneda);
    }

    void typedAmounts() {
        double m = 0;
        QVERIFY(leerMonto("1500,50", m));
        QCOMPARE(m, 1500.5);
        QVERIFY(leerMonto(" 7 ", m));
        QCOMPARE(m, 7.0);
        QVERIFY(!leerMonto("", m));
        QVERIFY(!leerMonto("abc", m));
        QVERIFY(!leerMonto("1e400", m));
        QVERIFY(!leerMonto("12,5,3", m));
    }

    void dates() {
        QCOMPARE(fechaSql(QDate(2026, 11, 5)), QString("2026-11-05"));
        QCOMPARE(fechaVista(QDate(2026, 11, 5)), QString("05-11-2026"));
        QCOMPARE(fechaVista(QString("2026-11-23")), QString("23-11-2026"));
        QCOMPARE(horaTexto(QTime(9, 5, 7)), QString("09:05:07"));
    }

    // Dates are read and written without Qt's format parser: the same dates as with it.
    void datesAsQtReadsThem_data() {
        QTest::addColumn<QString>("texto");
        for (const char* t : {"2026-11-23", "2026-11-23 10:00:00", "2024-02-29", "2026-02-29", "2026-13-01",
                              "2026-00-10", "2026-11-00", "0000-01-01", "0001-01-01", "9999-12-31", "2026-1-05",
                              "2026/11/23", "abcd-ef-gh", "", "+026-11-23", "2026-11-2x"})
            QTest::newRow(t) << QString::fromLatin1(t);
    }

    void datesAsQtReadsThem() {
        QFETCH(QString, texto);
        const QDate qt = QDate::fromString(texto.left(10), QStringLiteral("yyyy-MM-dd"));
        QCOMPARE(desdeFechaSql(texto), qt);
        QCOMPARE(fechaSql(qt), qt.toString(QStringLiteral("yyyy-MM-dd")));
        QCOMPARE(fechaVista(qt), qt.toString(QStringLiteral("dd-MM-yyyy")));
    }
};

QTEST_MAIN(TstTextos)
#include "tst_textos.moc"
