#pragma once

#include "sales/TicketPrinter.h"
#include "subastas/DisenoSubasta.h"
#include "subastas/Liquidacion.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;
class Db;

// The board engine: one race of the session's centre on one board layout.
// It loads the race (creating its rows once), writes each cell by itself,
// computes the totals from what the database holds, runs the pot, percentage
// and message commands, and builds the printed pieces. Every statement is
// confined to the race, the working date and the session's centre. A user of
// level "Socio" reads the board and writes nothing. Database failures go to
// the caller (the window's guard).
class Subasta {
public:
    Subasta(Context& ctx, const DisenoSubasta& diseno);

    const DisenoSubasta& diseno() const { return diseno_; }

    // The tracks in use, and the races of a track open for auction today.
    QStringList hipodromos();
    QString hipodromoPorDefecto();
    QStringList carreras(const QString& hipodromo);

    enum class Estado { SinCarrera, Abierta, Cerrada };
    // Loads a race on the big board (CargarCarrera) or the small one
    // (CargarCarreraTablita): closed by the race or by the day's auction
    // switch it shows "CERRADO" and takes no bids (its rows are not created);
    // open, its rows are created once and stamped with the group's percentage.
    Estado CargarCarrera(const QString& hipodromo, long long carrera);
    Estado CargarCarreraTablita(const QString& hipodromo, long long carrera);
    // Shows the other auction of the loaded race (MostrarCarrera).
    void MostrarCarrera(bool tablita);

    Estado estado() const { return estado_; }
    bool cargada() const { return estado_ != Estado::SinCarrera; }
    bool tablita() const { return tablita_; }
    const LadoSubasta& lado() const { return diseno_.lado(tablita_); }
    // The session may not write: level "Socio", or the race is closed.
    bool soloLectura() const;
    bool esSocio() const;
    long long carrera() const { return carrera_; }
    const QString& fecha() const { return fecha_; }
    double porcentaje() const { return porcentaje_; }
    const ParametrosSubasta& parametros() const { return parametros_; }
    const Recordset& filas() const { return filas_; }

    // One line of the board as it shows it.
    struct Linea {
        long long id = 0;
        int numero = 0;
        QString caballo;
        QString estado;            // "", "RETIRADO" or "INVALIDADO"
        bool retirado = false;
        bool invalidada = false;
        QVector<QString> mesas;    // one per table of the shown auction
        QVector<double> montos;
        double tablaCasa = 0;
    };
    QVector<Linea> lineas() const;
    // The totals of the shown auction (a commission too large to round is
    // told once, and shown unrounded).
    TotalesSubasta Calcular();

    // The cells, each written alone when left. A line is its place on the
    // board (0 to 13); a table is its number (1 to 5). Bad input is refused
    // with a message and writes nothing.
    bool escribirMonto(int linea, int tabla, const QString& texto);
    bool escribirComprador(int linea, int tabla, const QString& texto);
    bool escribirTablaCasa(int linea, const QString& texto);
    bool escribirPote(const QString& texto);
    // The line number: invalidates the line's sale on the shown auction, or
    // undoes it (the amounts and buyers stay cleared).
    bool invalidar(int linea);
    // The scratch box: both auctions of the horse cleared.
    bool retirar(int linea, bool retirado);

    bool RedondearRemate();
    bool AplicarPagoMinimo();
    bool AplicarDoblaje();
    bool CambiarPorcentaje();

    // The group's message line.
    bool enviarMensaje(const QString& texto);
    const QString& mensaje() const { return mensaje_; }

    // What another machine changed: a light query of the race's fingerprint,
    // the closing switches and the message; the rows are read again only when
    // the fingerprint moved. True when anything shown changed.
    bool refrescar();

    // A printed piece of the board, built from the database (the house amounts
    // of the races it prints are stored first).
    Impreso impreso(ImpresoSubasta cual);
    // Prints it on the receipt printer; the day's pieces also refill the local
    // report tables when this machine has them.
    bool Impresora(ImpresoSubasta cual);

    // Refills the local report tables with the centre's day (the house
    // amounts of its races stored first) and gives the report kind to open:
    // a race of the shown board, or the day; 0 when the board has none.
    int LlenarReporte(bool final);

    // Buttons' captions and titles.
    static QString tituloImpreso(const DisenoSubasta& d, ImpresoSubasta cual);

private:
    Estado cargar(const QString& hipodromo, long long carrera, bool tablita);
    void crearFilas(Db& db, long long idHipodromo);
    void leerFilas();
    std::optional<long long> idLinea(int linea) const;
    bool puedeEscribir();
    void guardarMontosDelDia();
    bool tablaDelTablero(int tabla) const;
    std::optional<long long> carreraPedida(const QString& titulo);
    // Runs a single-row statement of a line, then reads the rows again.
    bool escribirLinea(int linea, const std::string& sql, Params valores);
    QString huella(const Row& r) const;

    Context& ctx_;
    const DisenoSubasta& diseno_;
    ParametrosSubasta parametros_;
    Estado estado_ = Estado::SinCarrera;
    bool tablita_ = false;
    QString fecha_;
    QString hipodromo_;
    long long idHipodromo_ = 0;
    long long carrera_ = 0;
    double porcentaje_ = 0;
    Recordset filas_;
    QString mensaje_;
    QString huella_;
    bool desbordeAvisado_ = false;
};

}  // namespace hipico
