#pragma once

#include "core/Dialogs.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

// The auction boards. Every board works on the rows of carreras_remate of one
// race, one date and one betting centre, and holds one or two auctions of
// that race: the big board ("TG") and, on some boards, the small board
// ("TP"). A board is described by its layout: which table/buyer pairs and
// which pot, house-table, invalidation and house-amount columns make up each
// auction, and the few things where the boards differ. One engine (Subasta)
// runs every layout and one view (Form_Subasta) draws it.

// One auction of a board: the columns its statements read and write.
struct LadoSubasta {
    QString nombre;        // "TG" / "TP"
    QVector<int> tablas;   // its tables, 1 to 5 (tablaN / mesaN)
    QString pote;          // "pote" / "pote2"
    QString tablaCasa;     // "tablacasa" / "tablacasa2"; "" on a board without house table
    QString invalidado;    // "invalidado" / "invalidado2"
    QString montoCasa;     // "monto_casa" / "monto_casa2"
    bool existe() const { return !tablas.isEmpty(); }
};

// What a board adds to its pot besides the typed amount.
enum class AjustePote {
    Ninguno,
    PagoMinimo,  // raises the pot up to the group's minimo_remate
    Doblaje,     // adds the group's doblaje percent of the race's sale
};

// The pieces a board prints on the receipt printer.
enum class ImpresoSubasta {
    Boleto,           // "BOLETO REMATE": the loaded race
    ReporteRemate,    // "REPORTE REMATE": the loaded race, table by table
    FinalDia,         // the day's races of the shown auction, then the day's totals
    FinalTG,          // the day, big board
    FinalTP,          // the day, small board
    GanadoresRemate,  // "GANADORES REMATE": who bought each race's winner
    JugadoRemate,     // "JUGADO REMATE": what each buyer played in the day
};

struct DisenoSubasta {
    QString nombre;           // the window's name, under which the menu opens it
    QString titulo;           // the window's caption
    int subastas = 0;         // the group's number of tables that chooses it
    int rematetam = 0;        // and its board size (2 tables only)
    LadoSubasta grande;
    LadoSubasta pequeno;      // without tables on one-auction boards
    QString textoInvalidado;  // buyer text written by the invalidation: "INV" / "INVALIDADO"
    bool anulaComoRetiro = false;  // scratching a sold line voids it ("INVALIDADO", retirado 2)
    AjustePote ajuste = AjustePote::PagoMinimo;
    bool cambioPorcentaje = true;
    bool aGanarPorTabla = false;    // totals read "(1) a ganar :" ...
    bool premiosPorTabla = false;   // printed "Premio T(1): " ... "PREMIO TOTAL : "
    bool jugadoPorTabla = false;    // printed "1T: ", "2T: " ...
    QString tituloFinal = QStringLiteral("RPT REMATE FINAL");
    QVector<ImpresoSubasta> impresos;
    int reporteCarrera = 0;    // report kinds of the report launcher: a race of the big board,
    int reporteCarreraTP = 0;  // a race of the small board,
    int reporteFinal = 0;      // the day
    int ancho = 1180;         // the size the window gives itself
    int alto = 640;

    // The tables of both auctions, in order.
    QVector<int> todasLasTablas() const { return grande.tablas + pequeno.tablas; }
    bool dosSubastas() const { return pequeno.existe(); }
    const LadoSubasta& lado(bool pequena) const { return pequena && dosSubastas() ? pequeno : grande; }
};

// A report kind of the auctions, as the report launcher opens it: its caption
// and its template beside the program.
struct ReporteSubasta {
    int tipo;
    QString titulo;
    QString plantilla;
};
const QVector<ReporteSubasta>& reportesSubasta();
// The kind's entry (nullptr for a kind that is no auction report).
const ReporteSubasta* reporteSubasta(int tipo);

// The six boards.
const QVector<DisenoSubasta>& disenosSubasta();
// The board of that window name (nullptr when there is none).
const DisenoSubasta* disenoSubasta(const QString& nombre);
// The board a group's parameters choose (nullptr when its number of tables
// chooses none).
const DisenoSubasta* disenoPara(int subastas, int rematetam);

// The title of the auction windows' messages.
inline const QString kTituloSubasta = QStringLiteral("SUBASTA");
// A race no board of the centre has loaded (its auction rows do not exist).
inline const QString kSinSubasta = QStringLiteral("LA CARRERA NO TIENE SUBASTA");

// Texts shared by the boards and the auction windows.
namespace subasta {
inline const QString Cerrado = QStringLiteral("CERRADO");
inline const QString Invalidado = QStringLiteral("INVALIDADO");
inline const QString Retirado = QStringLiteral("RETIRADO");
inline const QString Casa = QStringLiteral("casa");
}  // namespace subasta

// A buyer code of the house: "999", "casa" or "CASA".
bool esCodigoCasa(const QString& mesa);
// The buyer box's text as typed: "C" or "c" becomes "casa".
QString compradorTecleado(const QString& texto);
// The buyer code a box writes ("C" made "casa", blanks around dropped):
// letters, digits and blanks, 15 at most. nullopt for anything else, told
// to the user.
std::optional<QString> compradorSubasta(const QString& texto, Dialogs& dialogs);
// An amount typed in a board's box: digits with a decimal comma (or point),
// not negative, below a billion; an empty box is 0. nullopt for anything
// else, told to the user.
std::optional<double> montoSubasta(const QString& texto, Dialogs& dialogs);

}  // namespace hipico
