#include "sales/TicketKeys.h"

#include "core/Cipher.h"
#include "core/Formato.h"
#include "sales/Juego.h"

#include <cmath>

namespace hipico {

QString prefijoBoleto(int inicialboleto, const QString& grupo) {
    return inicialboleto == 0 ? QStringLiteral("1") : grupo;
}

QString codigoBoleto(const QString& prefijo, const QDate& fechaVenta, long long numero) {
    return prefijo + mesDia(fechaVenta) + QString::number(numero);
}

QString textoNumero(double valor) { return Row::toText(QVariant(valor)); }

LlavesVenta llavesVenta(long long numero, long long caballo, double ganadores, long long carrera,
                        const QString& grupo) {
    const QString n = QString::number(numero);
    return {Encriptar(n, QString::number(caballo) + grupo + n), Encriptar(n, textoNumero(ganadores) + grupo + n),
            Encriptar(n, QString::number(carrera) + grupo + n)};
}

QString llave3Premio(double dividendoGrupo) { return Encriptar(textoNumero(dividendoGrupo), kClaveMaestra); }

QString llave6Liquidacion(const QString& grupo, long long carrera, long long caballo, double dividendoGrupo) {
    return Encriptar(grupo + "|" + QString::number(carrera) + "|" + QString::number(caballo) + "|" +
                         textoNumero(dividendoGrupo),
                     kClaveMaestra);
}

namespace {

bool mismoMonto(double a, double b) { return std::fabs(a - b) < 0.005; }

bool premioCorrecto(const Row& b) {
    const QString x = Desencriptar(b.text("llave3"), kClaveMaestra);
    bool ok = false;
    const double dividendo = x.toDouble(&ok);
    if (!ok || dividendo <= 0) return false;
    if (!mismoMonto(b.number("cobrado"), b.number("ganadores") * dividendo)) return false;
    return b.text("llave6") ==
           llave6Liquidacion(b.text("grupo"), b.integer("carrera"), b.integer("caballo"), dividendo);
}

bool coincideConCopia(const Row& b, const Row& c) {
    for (const char* campo : {"numero", "carrera", "caballo", "estatus"})
        if (b.integer(campo) != c.integer(campo)) return false;
    for (const char* campo : {"ganadores", "cobrado"})
        if (!mismoMonto(b.number(campo), c.number(campo))) return false;
    for (const char* campo : {"grupo", "ch", "nu_boleto"})
        if (b.text(campo) != c.text(campo)) return false;
    return true;
}

}  // namespace

Alteracion verificarBoleto(const Row& b, const std::optional<Row>& copia) {
    const LlavesVenta llaves =
        llavesVenta(b.integer("numero"), b.integer("caballo"), b.number("ganadores"), b.integer("carrera"),
                    b.text("grupo"));
    if (b.text("llave") != llaves.llave) return Alteracion::Caballo;
    if (b.text("llave5") != llaves.llave5) return Alteracion::Carrera;
    if (b.text("llave2") != llaves.llave2) return Alteracion::Unidades;
    if (estatusDe(b) == Estatus::Ganador && !premioCorrecto(b)) return Alteracion::Premio;
    if (copia && !coincideConCopia(b, *copia)) return Alteracion::CopiaGrupo;
    return Alteracion::Ninguna;
}

QString mensajeAlteracion(Alteracion a) {
    switch (a) {
    case Alteracion::Ninguna: return {};
    case Alteracion::Caballo:
        return QStringLiteral("Este boleto presenta una alteración, verificar bien los datos del boleto");
    case Alteracion::Carrera:
        return QStringLiteral(
            "Este boleto presenta una alteración en el numero de carrera, verificar bien los datos del boleto");
    case Alteracion::Unidades:
        return QStringLiteral("Este boleto presenta una alteración en el monto, verificar bien los datos del boleto");
    case Alteracion::Premio:
        return QStringLiteral("Este boleto presenta una alteracion en el Monto, verificar bien los datos del boleto");
    case Alteracion::CopiaGrupo:
        return QStringLiteral(
            "Este boleto presenta una alteración en el numero de Carrera, verificar bien los datos del boleto");
    }
    return {};
}

}  // namespace hipico
