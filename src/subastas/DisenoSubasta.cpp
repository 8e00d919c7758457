#include "subastas/DisenoSubasta.h"

#include "core/Formato.h"

namespace hipico {

namespace {

LadoSubasta grande(QVector<int> tablas, bool conCasa = true) {
    return {QStringLiteral("TG"), std::move(tablas), QStringLiteral("pote"),
            conCasa ? QStringLiteral("tablacasa") : QString(), QStringLiteral("invalidado"),
            QStringLiteral("monto_casa")};
}

LadoSubasta pequeno(QVector<int> tablas, bool conCasa = true) {
    return {QStringLiteral("TP"), std::move(tablas), QStringLiteral("pote2"),
            conCasa ? QStringLiteral("tablacasa2") : QString(), QStringLiteral("invalidado2"),
            QStringLiteral("monto_casa2")};
}

QVector<DisenoSubasta> construir() {
    using I = ImpresoSubasta;
    DisenoSubasta dos;
    dos.nombre = QStringLiteral("Form_Subasta_2T");
    dos.titulo = QStringLiteral("SUBASTA - 2 TABLAS");
    dos.subastas = 2;
    dos.grande = grande({1, 2});
    dos.pequeno = pequeno({3, 4});
    dos.textoInvalidado = QStringLiteral("INV");
    dos.impresos = {I::Boleto, I::FinalDia};
    dos.reporteCarrera = 9;
    dos.reporteFinal = 10;
    dos.ancho = 1000;

    // The same board for an 800-pixel screen.
    DisenoSubasta ochocientos = dos;
    ochocientos.nombre = QStringLiteral("Form_Subasta_2T_800");
    ochocientos.titulo = QStringLiteral("SUBASTA - 2 TABLAS");
    ochocientos.rematetam = 1;
    ochocientos.textoInvalidado = subasta::Invalidado;
    ochocientos.impresos = {I::FinalDia};
    ochocientos.reporteCarrera = 25;
    ochocientos.ancho = 790;
    ochocientos.alto = 500;

    DisenoSubasta tres;
    tres.nombre = QStringLiteral("Form_Subasta_3T");
    tres.titulo = QStringLiteral("SUBASTA - 3 TABLAS");
    tres.subastas = 3;
    tres.grande = grande({1, 2, 3});
    tres.pequeno = pequeno({4, 5});
    tres.textoInvalidado = QStringLiteral("INV");
    tres.anulaComoRetiro = true;
    tres.ajuste = AjustePote::Ninguno;
    tres.cambioPorcentaje = false;
    tres.jugadoPorTabla = true;
    tres.impresos = {I::ReporteRemate, I::FinalTG, I::FinalTP, I::GanadoresRemate, I::JugadoRemate};
    tres.reporteCarrera = 35;
    tres.reporteFinal = 4;
    tres.ancho = 1200;

    DisenoSubasta cuatro;
    cuatro.nombre = QStringLiteral("Form_Subasta_4T");
    cuatro.titulo = QStringLiteral("SUBASTA - 4 TABLAS");
    cuatro.subastas = 4;
    cuatro.grande = grande({1, 2, 3, 4});
    cuatro.textoInvalidado = QStringLiteral("INV");
    cuatro.ajuste = AjustePote::Doblaje;
    cuatro.premiosPorTabla = true;
    cuatro.impresos = {I::Boleto, I::FinalDia};
    cuatro.reporteCarrera = 8;
    cuatro.reporteFinal = 11;
    cuatro.ancho = 1200;

    DisenoSubasta cinco;
    cinco.nombre = QStringLiteral("Form_Subasta_5T");
    cinco.titulo = QStringLiteral("SUBASTA - 5 TABLAS");
    cinco.subastas = 5;
    cinco.grande = grande({1, 2, 3, 4, 5}, false);
    cinco.textoInvalidado = QStringLiteral("INV");
    cinco.aGanarPorTabla = true;
    cinco.premiosPorTabla = true;
    cinco.tituloFinal = QStringLiteral("  RPT REMATE FINAL");
    cinco.impresos = {I::Boleto, I::ReporteRemate, I::FinalDia};
    cinco.reporteCarrera = 23;
    cinco.reporteFinal = 4;
    cinco.ancho = 1300;

    // International races: the 800 board's statements on a full screen, no house table.
    DisenoSubasta internacional = ochocientos;
    internacional.nombre = QStringLiteral("Form_SubastaINT_2T");
    internacional.titulo = QStringLiteral("SUBASTA INTERNACIONAL - 2 TABLAS");
    internacional.subastas = 10;
    internacional.rematetam = 0;
    internacional.grande = grande({1, 2}, false);
    internacional.pequeno = pequeno({3, 4}, false);
    internacional.ancho = 940;
    internacional.alto = 640;

    return {dos, ochocientos, tres, cuatro, cinco, internacional};
}

}  // namespace

const QVector<DisenoSubasta>& disenosSubasta() {
    static const QVector<DisenoSubasta> disenos = construir();
    return disenos;
}

const DisenoSubasta* disenoSubasta(const QString& nombre) {
    for (const DisenoSubasta& d : disenosSubasta())
        if (d.nombre == nombre) return &d;
    return nullptr;
}

const DisenoSubasta* disenoPara(int subastas, int rematetam) {
    // Three tables open the three-table board whatever the board size says.
    const int tam = subastas == 2 ? (rematetam == 0 ? 0 : 1) : -1;
    for (const DisenoSubasta& d : disenosSubasta())
        if (d.subastas == subastas && (tam < 0 || d.rematetam == tam)) return &d;
    return nullptr;
}

bool esCodigoCasa(const QString& mesa) {
    const QString m = mesa.trimmed();
    return m == QLatin1String("999") || m == QLatin1String("casa") || m == QLatin1String("CASA");
}

QString compradorTecleado(const QString& texto) {
    return texto == QLatin1String("C") || texto == QLatin1String("c") ? subasta::Casa : texto;
}

bool compradorValido(const QString& texto) {
    if (texto.size() > 15) return false;
    for (const QChar c : texto)
        if (!(c.isLetterOrNumber() || c == QLatin1Char(' '))) return false;
    return true;
}

std::optional<double> montoSubasta(const QString& texto) {
    if (texto.trimmed().isEmpty()) return 0.0;
    double v = 0;
    if (!leerMonto(texto, v) || v < 0 || v > 999999999) return std::nullopt;
    return v;
}

}  // namespace hipico
