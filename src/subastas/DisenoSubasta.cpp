#include "subastas/DisenoSubasta.h"

#include "core/Formato.h"
#include "core/Textos.h"

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

// A board: its name and caption, the group values that choose it, its two
// auctions, what it prints, its report kinds and the size it takes.
DisenoSubasta tablero(const char* nombre, const char* titulo, int subastas, int rematetam, LadoSubasta tg,
                      LadoSubasta tp, QVector<ImpresoSubasta> impresos, int reporteCarrera, int reporteFinal,
                      int ancho, int alto = 640) {
    DisenoSubasta d;
    d.nombre = QString::fromLatin1(nombre);
    d.titulo = QString::fromLatin1(titulo);
    d.subastas = subastas;
    d.rematetam = rematetam;
    d.grande = std::move(tg);
    d.pequeno = std::move(tp);
    d.textoInvalidado = QStringLiteral("INV");
    d.impresos = std::move(impresos);
    d.reporteCarrera = reporteCarrera;
    d.reporteFinal = reporteFinal;
    d.ancho = ancho;
    d.alto = alto;
    return d;
}

QVector<DisenoSubasta> construir() {
    using I = ImpresoSubasta;
    DisenoSubasta dos = tablero("Form_Subasta_2T", "SUBASTA - 2 TABLAS", 2, 0, grande({1, 2}), pequeno({3, 4}),
                                      {I::Boleto, I::FinalDia}, 9, 10, 1000);
    // The same board for an 800-pixel screen.
    DisenoSubasta ochocientos = tablero("Form_Subasta_2T_800", "SUBASTA - 2 TABLAS", 2, 1, grande({1, 2}),
                                        pequeno({3, 4}), {I::FinalDia}, 25, 10, 790, 500);
    ochocientos.textoInvalidado = subasta::Invalidado;
    ochocientos.reporteCarreraTP = dos.reporteCarreraTP = 26;

    DisenoSubasta tres = tablero("Form_Subasta_3T", "SUBASTA - 3 TABLAS", 3, 0, grande({1, 2, 3}), pequeno({4, 5}),
                                 {I::ReporteRemate, I::FinalTG, I::FinalTP, I::GanadoresRemate, I::JugadoRemate}, 3,
                                 4, 1200);
    tres.reporteCarreraTP = 35;
    tres.anulaComoRetiro = true;
    tres.ajuste = AjustePote::Ninguno;
    tres.cambioPorcentaje = false;
    tres.jugadoPorTabla = true;

    DisenoSubasta cuatro = tablero("Form_Subasta_4T", "SUBASTA - 4 TABLAS", 4, 0, grande({1, 2, 3, 4}), {},
                                   {I::Boleto, I::FinalDia}, 8, 11, 1200);
    cuatro.ajuste = AjustePote::Doblaje;
    cuatro.premiosPorTabla = true;

    DisenoSubasta cinco = tablero("Form_Subasta_5T", "SUBASTA - 5 TABLAS", 5, 0, grande({1, 2, 3, 4, 5}, false), {},
                                  {I::Boleto, I::ReporteRemate, I::FinalDia}, 23, 4, 1300);
    cinco.aGanarPorTabla = true;
    cinco.premiosPorTabla = true;
    cinco.tituloFinal = QStringLiteral("  RPT REMATE FINAL");

    // International races: the 800 board's statements on a full screen, no house table.
    DisenoSubasta internacional = tablero("Form_SubastaINT_2T", "SUBASTA INTERNACIONAL - 2 TABLAS", 10, 0,
                                          grande({1, 2}, false), pequeno({3, 4}, false), {I::FinalDia}, 25, 10, 940);
    internacional.textoInvalidado = subasta::Invalidado;
    internacional.reporteCarreraTP = 26;

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

const QVector<ReporteSubasta>& reportesSubasta() {
    static const QVector<ReporteSubasta> reportes = [] {
        const QString carrera = QStringLiteral("REPORTE POR CARRERA - SUBASTA");
        const QString final = QStringLiteral("REPORTE FINAL - SUBASTA");
        const auto ruta = [](const char* archivo) { return QStringLiteral("\\Reportes\\Subasta\\") + archivo; };
        return QVector<ReporteSubasta>{
            {3, carrera, ruta("carrera.rpt")},        {4, final, ruta("diario.rpt")},
            {8, carrera, ruta("carrera2.rpt")},       {9, carrera, ruta("carrera_TB.rpt")},
            {10, final, ruta("diario_TB.rpt")},       {11, final, ruta("General.rpt")},
            {23, carrera, ruta("carrera5.rpt")},      {25, carrera, ruta("carrera_TB2.rpt")},
            {26, carrera, ruta("carrera_TB2_V2.rpt")}, {35, carrera, ruta("carrera_3TB.rpt")},
            {38, QStringLiteral("REPORTE VENTA SUBASTA"), ruta("General_Subasta.rpt")},
        };
    }();
    return reportes;
}

const ReporteSubasta* reporteSubasta(int tipo) {
    for (const ReporteSubasta& r : reportesSubasta())
        if (r.tipo == tipo) return &r;
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

std::optional<QString> compradorSubasta(const QString& texto, Dialogs& dialogs) {
    const QString comprador = compradorTecleado(texto.trimmed());
    bool valido = comprador.size() <= 15;
    for (const QChar c : comprador) valido = valido && (c.isLetterOrNumber() || c == QLatin1Char(' '));
    if (valido) return comprador;
    dialogs.refuse(kTituloSubasta, QStringLiteral("EL CODIGO DEL COMPRADOR NO ES VALIDO"));
    return std::nullopt;
}

std::optional<double> montoSubasta(const QString& texto, Dialogs& dialogs) {
    if (texto.trimmed().isEmpty()) return 0.0;
    double v = 0;
    if (leerMonto(texto, v) && v >= 0 && v <= 999999999) return v;
    dialogs.refuse(kTituloSubasta, texto::MontoNoValido);
    return std::nullopt;
}

}  // namespace hipico
