#include "reportes/FilasReporte.h"

namespace hipico {

QString textoLocal(const QString& texto, int largo) {
    QString out = texto.left(largo);
    for (QChar& c : out)
        if (c.unicode() > 0xFF) c = QLatin1Char('?');
    return out;
}

Insercion FilaDiario::insercion() const {
    return Insercion("rpt_diario")("ch", textoLocal(grupo, 45))("venta", venta)("fecha", fecha)(
        "chipico", textoLocal(centro, 45))("fecha_inicio", desde)("fecha_final", hasta)("saldo", saldo)(
        "premios", premios)("monto_porpagar", porPagar)("por_ch", porCh)("por_casa", porCasa)("por_admin", porAdmin);
}

Insercion FilaJugada::insercion() const {
    return Insercion("rpt_jugadas")("numero", numero)("boleto", textoLocal(boleto, 45))("monto", monto)(
        "carrera", carrera)("caballo", caballo)("puesto", puesto)("tablas", tablas)("ganadores", ganadores)(
        "fecha", fecha)("ch", textoLocal(ch, 45))("grupo", textoLocal(grupo, 45))("cobrado", cobrado)(
        "estatus", estatus)("porcobrar", porCobrar)("cobradoreal", cobradoReal);
}

Insercion FilaBitacora::insercion() const {
    return Insercion("rpt_bitacora")("numero", numero)("carrera", carrera)("caballo", caballo)("ganadores", ganadores)(
        "taquilla", textoLocal(taquilla, 15))("grupo", textoLocal(grupo, 5))("hora", textoLocal(hora, 15))(
        "fecha", fecha)("nu_boleto", textoLocal(nuBoleto, 25))("cobrado", cobrado)("motivo", textoLocal(motivo, 255))(
        "usuario", textoLocal(usuario, 10))("tipo_motivo", textoLocal(tipoMotivo, 15))("fecha_inicio", desde)(
        "fecha_final", hasta)("estatus", estatus)("monto", monto)("tablas", static_cast<long long>(tablas));
}

Insercion FilaDividendo::insercion() const {
    return Insercion("rpt_dividendos")("fecha", fecha)("caballo", textoLocal(caballo, 45))("num_cab", numCab)(
        "dividendo", dividendo)("ch", textoLocal(ch, 45))("carrera", carrera)("num_cab2", numCab2)(
        "dividendo2", dividendo2);
}

Insercion FilaGeneral::insercion() const {
    return Insercion("rpt_general")("fecha", fecha)("ganadores", ganadores)("tablafija", tablafija)("remate", remate)(
        "macuare", macuare)("puestos", puestos)("polla", polla)("fecha_inicio", desde)("fecha_final", hasta)(
        "ch", textoLocal(ch, 45))("dinamicas", dinamicas)("descargas", descargas);
}

Insercion FilaResultado::insercion() const {
    return Insercion("rpt_resultadoscarreras")("ch", textoLocal(ch, 45))("fecha", fecha)("carrera", carrera)(
        "jugado", jugado)("cobrado", cobrado)("total", total)("monto_porpagar", porPagar);
}

}  // namespace hipico
