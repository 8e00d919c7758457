#include "sales/Tickets.h"

#include "core/Formato.h"
#include "sales/TicketKeys.h"

namespace hipico {

namespace {

QString monto(double valor, bool enDolares) { return formatoMonto(valor, enDolares); }

QString caballo(const DatosBoleto& b) {
    return QStringLiteral("CABALLO: (") + QString::number(b.caballo) + QStringLiteral(") ") + b.nombreCaballo;
}

QString montoJugado(const DatosBoleto& b) {
    return QStringLiteral("MONTO JUGADO: ") + textoUnidades(b.ganadores) + QStringLiteral("  Ganadores");
}

}  // namespace

QString noImpreso(const QString& codigo) {
    return QStringLiteral("EL BOLETO %1 QUEDÓ VENDIDO, PERO NO SE PUDO IMPRIMIR.\n"
                          "PULSE F9 PARA IMPRIMIR UNA COPIA.")
        .arg(codigo);
}

namespace {

void datosEmpresa(QStringList& l, const DatosBoleto& b) {
    if (!b.imprimirDatos) return;
    if (!b.empresa.isEmpty()) l << b.empresa;
    if (!b.rif.isEmpty()) l << QStringLiteral("RIF: ") + b.rif;
}

}  // namespace

QString textoUnidades(double ganadores) {
    QString t = textoNumero(ganadores);
    t.replace(QLatin1Char('.'), QLatin1Char(','));
    return t;
}

Impreso ticketVenta(const DatosBoleto& b, bool grafico) {
    QStringList l;
    const QString fecha = fechaVista(b.fecha);
    if (grafico) {
        l << QStringLiteral("   VENTA GANADORES");
        datosEmpresa(l, b);
        l << QStringLiteral("CENTRO HIPICO ") + b.centro;
        l << QStringLiteral("TAQUILLA: ") + b.taquilla + QStringLiteral(" H: ") + b.hora;
    } else {
        l << QStringLiteral("    VENTA GANADORES");
        datosEmpresa(l, b);
        l << QString();
        l << QStringLiteral("CH:") + b.centro;
        l << QStringLiteral("TAQ: ") + b.taquilla;
    }
    l << QStringLiteral("F: ") + fecha + QStringLiteral("H: ") + b.hora;
    l << QStringLiteral("BOLETO: ") + b.codigo + QStringLiteral(" C: ") + QString::number(b.carrera);
    l << caballo(b);
    l << montoJugado(b);
    l << QStringLiteral("COSTO DEL BOLETO: ") + monto(b.costo, b.enDolares);
    return {l, grafico ? b.codigo : QString(), noImpreso(b.codigo)};
}

Impreso copiaBoleto(const Impreso& original, const QString& fecha, const QString& hora) {
    Impreso c = original;
    c.lineas.prepend(QStringLiteral("REIMPRESO: ") + fechaVista(fecha) + QStringLiteral(" ") + hora);
    c.lineas.prepend(kMarcaCopia);
    c.lineas.append(kMarcaCopia);
    c.siNoSale.clear();
    return c;
}

Impreso ticketClave(const DatosBoleto& b, bool grafico) {
    QStringList l;
    const QString fecha = fechaVista(b.fecha);
    const QString separador = grafico ? QString(61, QLatin1Char('-')) : QString(40, QLatin1Char('*'));
    l << separador;
    if (grafico) {
        l << QStringLiteral("  VENTA GANADORES");
        datosEmpresa(l, b);
        l << QStringLiteral("CENTRO HIPICO ") + b.centro;
        l << QStringLiteral("TAQUILLA: ") + b.taquilla + QStringLiteral(" HORA: ") + b.hora;
        l << QStringLiteral("FECHA: ") + fecha;
    } else {
        l << QStringLiteral("       CENTRO HIPICO ") + b.centro;
        datosEmpresa(l, b);
        l << QStringLiteral("TAQUILLA ") + b.taquilla;
        l << QStringLiteral("JUEGO GANADORES");
        l << QStringLiteral("FECHA: ") + fecha;
        l << QStringLiteral("HORA: ") + b.hora;
    }
    l << QStringLiteral("HIPODROMO: ") + b.hipodromo;
    l << QStringLiteral("BOLETO: ") + b.codigo;
    l << QStringLiteral("CARRERA: ") + QString::number(b.carrera);
    l << caballo(b);
    l << montoJugado(b);
    l << (grafico ? QStringLiteral("COSTO DEL BOLETO: ") : QStringLiteral("MONTO EN BSF: ")) +
             monto(b.costo, b.enDolares);
    l << QStringLiteral("            MUCHA SUERTE!!!!!!!!      ");
    l << QStringLiteral("BOLETO CADUCA A LOS ") + QString::number(b.diasValidez) + QStringLiteral(" Dias");
    if (grafico) l << separador;
    return {l, grafico ? b.codigo : QString(), noImpreso(b.codigo)};
}

Impreso reciboCobro(const DatosCobro& c, bool grafico) {
    QStringList l;
    if (grafico) {
        l << QStringLiteral("  COBRO DE JUGADA GANADORES");
        l << QStringLiteral("TAQUILLA: ") + c.taquilla;
    } else {
        l << QStringLiteral("COBRO DE JUGADA GANADORES");
        l << QStringLiteral("CH: ") + c.centro;
    }
    l << QStringLiteral("FECHA: ") + fechaVista(c.fecha);
    l << QStringLiteral("HORA: ") + c.hora;
    l << QStringLiteral("BOLETO: ") + c.codigo;
    l << QStringLiteral("MONTO COBRADO : ") + monto(c.monto, c.enDolares);
    return {l, QString(),
            QStringLiteral("EL BOLETO %1 QUEDÓ PAGADO, PERO NO SE PUDO IMPRIMIR EL RECIBO.").arg(c.codigo)};
}

Impreso paginaPrueba(const QString& centro, const QString& taquilla, const QString& fecha, const QString& hora,
                     bool) {
    return {{QStringLiteral("--- PRUEBA ---"), QStringLiteral("CENTRO HIPICO ") + centro,
             QStringLiteral("TAQUILLA ") + taquilla, QStringLiteral("FECHA: ") + fechaVista(fecha),
             QStringLiteral("HORA: ") + hora, kSeparadorPrueba},
            QString(), QString()};
}

Impreso resumenVentas(const DatosResumen& r, bool grafico) {
    const QString linea = QStringLiteral("---------------------------------");
    const TotalesDia& t = r.totales;
    QStringList l;
    if (grafico) {
        l << r.encabezadoGrafico << QStringLiteral("          RESUMEN DE VENTAS") << linea;
    } else {
        l << r.encabezado << QStringLiteral("RESUMEN DE VENTAS");
    }
    l << QStringLiteral("CENTRO HIPICO ") + r.centro;
    l << QStringLiteral("TAQUILLA ") + r.taquilla;
    l << QStringLiteral("FECHA: ") + fechaVista(r.fecha);
    l << QStringLiteral("HORA: ") + r.hora;
    l << QStringLiteral("CARRERA: ") + r.carreras;
    if (grafico) l << linea;
    l << QStringLiteral("VENTA : ") + monto(t.venta, r.enDolares);
    l << QStringLiteral("PREMIOS PAGADOS : ") + monto(t.cobrado, r.enDolares);
    l << QStringLiteral("POR PAGAR : ") + monto(t.porCobrar, r.enDolares);
    l << QStringLiteral("SALDO : ") + monto(t.saldo(), r.enDolares);
    l << linea;
    l << QStringLiteral("MONTO EN CAJA : ") + monto(t.caja(), r.enDolares);
    l << QStringLiteral("BOLETOS VENDIDOS : ") + QString::number(t.cantVenta);
    l << QStringLiteral("BOLETOS PAGADOS  : ") + QString::number(t.cantCobrado);
    l << QStringLiteral("BOLETOS POR PAGAR: ") + QString::number(t.cantPorCobrar);
    l << QStringLiteral("BOLETOS ANULADOS : ") + QString::number(t.anulados);
    for (const GanadorCarrera& g : r.ganadores) {
        l << linea;
        l << QStringLiteral("CARRERA: ") + QString::number(g.carrera);
        l << QStringLiteral("CABALLO GANADOR : ") + QString::number(g.caballo);
        l << QStringLiteral("DIVIDENDO : ") + monto(g.dividendo, r.enDolares);
        if (g.empate > 0) {
            l << QStringLiteral("CABALLO EMPATE : ") + QString::number(g.empate);
            l << QStringLiteral("DIVIDENDO : ") + monto(g.dividendo2, r.enDolares);
        }
    }
    if (grafico) l << linea;
    return {l, QString(), QString()};
}

}  // namespace hipico
