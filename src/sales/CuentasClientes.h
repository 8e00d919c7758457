#pragma once

#include "core/Recordset.h"
#include "sales/ImpresoraTaquilla.h"
#include "schema/Escritores.h"

#include <QDate>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// ---- The client ledger (jugadas_clientes), shared by every window that
// moves or reports a client's account ----

// The report launcher's kind of a client's statement.
inline constexpr int kReporteJugadasClientes = 39;

// A client's balance: the plain sum of the movements (the record; a debit
// checks the running balance `clientes.saldo` the server keeps from them,
// read under the client's row lock).
double saldoCliente(Db& db, long long idCliente);

// Writes one movement of a client's account in one transaction that first
// reads the client's running balance with the row locked (as the winner
// sale does), so movements of one client are written one after the other
// and the balance read is exact, also across the nodes of a cluster. A
// debit larger than the balance is not written. Gives whether it was written
// and the balance it found.
struct Asiento {
    bool escrito = false;
    double saldo = 0;
};
Asiento asentarMovimiento(Db& db, const MovimientoCliente& movimiento);

// The statement's query: a client's movements between two dates
// ("YYYY-MM-DD", both included) with the client's name, the movement's type,
// the user who wrote it and its bank, by date. A movement whose type, bank
// or user has no row is left out by the join.
Recordset jugadasDelCliente(Db& central, long long idCliente, const QString& desde, const QString& hasta);
// Empties the local report table rpt_jugadas_clientes and writes the rows
// of jugadasDelCliente into it, in one transaction.
void llenarJugadasClientes(Db& local, const Recordset& movimientos);
// The report kind that draws that table.
constexpr int kReporteJugadasCliente = 39;

// The slip of a recorded movement.
struct DatosJugada {
    QString centro;
    QString fecha;  // "YYYY-MM-DD"
    QString hora;
    QString juego;
    double monto = 0;  // as typed (positive)
};
Impreso reciboJugada(const DatosJugada& j, bool grafico);

// Logic of the play entry window (Form_IngresoJugadas): finds or creates a
// client, shows the balance, records a play against it or a positive entry
// (a prize or money brought in), prints the slip, and gives the client's
// statement between two dates.
class IngresoJugadas {
public:
    explicit IngresoJugadas(Context& ctx);

    // The games a play is recorded for.
    static const QStringList& juegos();
    // The operation types (tipo_deposito) and banks (bancos): id and name.
    using Opciones = QVector<QPair<int, QString>>;
    Opciones tiposOperacion();
    Opciones bancos();

    // Text_Bus2: the clients the session may see whose name (or, below the
    // administrator levels, user name) contains the text: every centre for
    // the administrator levels, the own centre for "Gerente", the own
    // clients for everyone else. None: "No se encuentra el cliente" (unless
    // `avisar` is false). nullopt after a failure or when none was found.
    std::optional<Recordset> buscarClientes(const QString& texto, bool avisar = true);

    struct Cliente {
        long long id = 0;
        QString nombre;
        int tipo = 1;
        QString usuario;
        double saldo = 0;
    };
    // Chooses a client (one the session may see) and reads the balance.
    bool elegirCliente(long long idCliente);
    const std::optional<Cliente>& cliente() const { return cliente_; }

    // Command4: asks for the name and adds the client to the session's
    // centre, then chooses it.
    struct DatosCliente {
        QString observacion;
        int tipo = 1;     // 1 ordinary, 2 VIP
        QString usuario;  // the name the booth's sale finds it by ("" for none)
    };
    bool nuevoCliente(const DatosCliente& datos);

    // Bton_Procesar: a play (debit) or a positive entry (credit) for the
    // chosen client, the slip printed, the balance read again.
    struct Jugada {
        bool positiva = false;
        QString juego;
        QString monto;  // typed, decimal comma
        int tipo = 0;   // id_tipo_deposito
        int banco = 0;  // id_banco
        QString nuOperacion;
        QString observacion;
    };
    bool procesar(const Jugada& jugada);
    // The last slip (printed or not, as the machine's settings say).
    const std::optional<Impreso>& ultimoRecibo() const { return recibo_; }

    // Command2: the chosen client's statement, also written into
    // rpt_jugadas_clientes when this machine has its local report schema.
    // Nothing found: "No se encontro Ningun registro" (unless `avisar` is false).
    std::optional<Recordset> estadoDeCuenta(const QDate& desde, const QDate& hasta, bool avisar = true);

private:
    std::string visibles(Params& params) const;
    Context& ctx_;
    ImpresoraTaquilla impresora_;
    std::optional<Cliente> cliente_;
    std::optional<Impreso> recibo_;
};

inline const QString kNoSeEncuentraCliente = QStringLiteral("No se encuentra el cliente");
inline const QString kDebeSeleccionarCliente = QStringLiteral("Debe seleccionar un cliente");
inline const QString kIngreseNombreCliente = QStringLiteral("Ingrese el nombre del cliente");
inline const QString kTituloNuevoCliente = QStringLiteral("Nuevo Cliente");
inline const QString kNombreClienteVacio = QStringLiteral(" Debe ingresar un nombre para el cliente");
inline const QString kMotivoPositivo = QStringLiteral("Ingrese el motivo del premio o el dinero");
inline const QString kTituloPositivo = QStringLiteral("Dinero Positivo del Cliente");
inline const QString kDatosGuardados = QStringLiteral("Los datos fueron guardados satisfactoriamente");
inline const QString kTituloRegistroJugada = QStringLiteral("Registro de Jugada");
inline const QString kSinInternetCliente = QStringLiteral("Checkee su conexion a internet por favor, parece que esta fallando.");
inline const QString kOperacionPositiva = QStringLiteral("Positivo");

}  // namespace hipico
