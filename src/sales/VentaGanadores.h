#pragma once

#include "core/Niveles.h"
#include "core/Recordset.h"
#include "sales/AjustesLocales.h"
#include "sales/Tickets.h"

#include <QString>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// Logic of the winner-bet sale window (Form_Venta_WIN): sale, supervisor
// password, payment lookup and payment, void, running totals, sales per
// horse, race and runner lists, sale unit, printed summary.
//
// Money checks run in one transaction with the rows they depend on locked:
// the horse's race-card row (so a close of the race waits for the sales in
// flight, and a sale after the close sees it closed), the client's row, and
// the ticket's row at payment and void.
class VentaGanadores {
public:
    explicit VentaGanadores(Context& ctx);

    // Window load: printing settings, the sale unit of this machine.
    void cargar();

    // ---- Sale (Boton_Procesar) ----
    enum class Resultado { Vendido, Rechazado, PedirClave };
    struct Boleto {
        long long numero = 0;
        QString codigo;
        long long carrera = 0;
        long long caballo = 0;
        QString nombreCaballo;
        double ganadores = 0;
        double costo = 0;
        QString fecha;
        QString hora;
        bool conClave = false;  // sold with the supervisor password (keys left at zero)
    };
    struct Venta {
        Resultado resultado = Resultado::Rechazado;
        Boleto boleto;  // when sold
    };
    // race, horse and amount as typed (amount in the sale unit), and the
    // client's user name ("" = no client).
    Venta procesarVenta(const QString& carrera, const QString& caballo, const QString& monto,
                        const QString& cliente = {});
    // The password frame (MostrarFrameClave) is waiting for the supervisor.
    bool esperandoClave() const { return pendiente_.has_value(); }
    // Text_Clave + Enter: the refused sale is finished by the password path
    // when the password is the group's clave_win.
    Venta ventaConClave(const QString& clave);
    void cancelarClave() { pendiente_.reset(); }

    // ---- Payment ----
    struct Consulta {
        bool pagable = false;
        QString codigo;
        QString mensaje;  // "CABALLO GANADOR" / "CABALLO RETIRADO" when payable
        double monto = 0;
        int estatus = -1;
    };
    // Text_boletoCobro + Enter: looks the ticket up and checks it; refusals
    // are shown to the user. A payable ticket is kept for cobrarBoleto.
    Consulta buscarBoletoCobro(const QString& codigo);
    const std::optional<Consulta>& boletoPorCobrar() const { return porCobrar_; }
    // Boton_Cobrar_Boleto2: pays the ticket accepted by the lookup (1 -> 2,
    // 4 -> 3) exactly once, and prints the payment slip.
    bool cobrarBoleto();

    // ---- Void (anular_boleto_menu) ----
    bool puedeAnular() const;
    bool anularBoleto();

    // ---- Running totals and lists ----
    TotalesDia Totalizar_Dia();
    struct VentaCaballo {
        long long caballo = 0;
        double unidades = 0;
    };
    QVector<VentaCaballo> Calcular_VentasCaballos(long long carrera);
    struct Corredor {
        long long numero = 0;
        QString nombre;
        bool retirado = false;
    };
    QVector<Corredor> corredores(long long carrera);
    struct CarreraDia {
        long long carrera = 0;
        bool abierta = false;
    };
    QVector<CarreraDia> carreras();
    // The group's race open for sale (the window starts on it).
    long long carreraDelGrupo() const;
    // The track the booth sells: the group's, else the system's current track.
    long long pistaDelGrupo() const;

    // ---- Sale unit ----
    UnidadVenta unidad() const { return unidad_; }
    // Asks the confirmation, stores the choice in this machine's file and
    // tells the user; returns whether it changed.
    bool cambiarUnidad(UnidadVenta nueva);
    // "$" or "BS": the currency label of the amount box and of the bolívar entry.
    QString etiquetaMoneda() const;

    // ---- Printed summary (Bton_ImprimirRV) and final cash-up ----
    // Races from..to; 0, 0 = all races ("TODAS").
    bool imprimirResumen(long long desde, long long hasta);
    TotalesDia Cuadrar(long long desde = 0, long long hasta = 0);

    // The last piece printed (or that failed to print) and its reprint.
    const std::optional<Impreso>& ultimoImpreso() const { return ultimo_; }
    bool reimprimir();

    // Amounts as this window shows them (mascara 1: plain numbers).
    QString montoPantalla(double monto) const;
    bool enDolares() const;
    double valorGanador() const;

private:
    struct Solicitud {
        QString carrera, caballo, monto, cliente;
        Row grupo;
        UnidadVenta unidad = UnidadVenta::Ganadores;
        bool autorizada = false;
    };
    Venta vender(const Solicitud& s);
    Row leerGrupo(const QString& carrera, const QString& caballo);
    bool imprimir(const Impreso& graficoORaw);
    Impreso ticketDe(const Boleto& b, const Row& grupo);
    QString hipodromo(long long id);
    std::optional<Consulta> evaluar(const Row& boleto, bool avisar);
    void refusal(const QString& titulo, const QString& texto);
    bool grafico() const;

    Context& ctx_;
    UnidadVenta unidad_ = UnidadVenta::Ganadores;
    std::optional<Solicitud> pendiente_;
    std::optional<Consulta> porCobrar_;
    std::optional<Impreso> ultimo_;
};


// Titles and texts of the window shared with its tests.
inline const QString kTituloValidacion = QStringLiteral("Validación del Sistema");
inline const QString kTituloVerifique = QStringLiteral("VERIFIQUE E INTENTE DE NUEVO");
inline const QString kTituloParametros = QStringLiteral("PARAMETROS DE VENTA");
inline const QString kTituloCobro = QStringLiteral("COBRO DE BOLETOS");
inline const QString kTituloAnulacion = QStringLiteral("ANULACION DE BOLETOS");
inline const QString kTituloImpresora = QStringLiteral("IMPRESORA");

}  // namespace hipico
