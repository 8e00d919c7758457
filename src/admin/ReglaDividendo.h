#pragma once

#include "core/Recordset.h"

#include <QString>
#include <QStringList>

namespace hipico {

// The dividend rule of a group: how the official dividend D of the winner
// becomes the dividend X the group pays per unit. It lives in the group's row
// of `grupos`, or, with the per-track option, in the centre's row of
// `dividendos` for the race's track; `dividendos_ampliados` adds two closed
// bands to the runner-count rules of 5, 6 and 7 runners.

// The rule for a field of N runners (4 to 7).
struct ReglaCorredores {
    double r1 = 0, r2 = 0;    // closed band: bounds, amount vr1, option op1
    double vr1 = 0;
    int op1 = 0;
    double r3 = 0, r4 = 0;    // open band from r3, amount vr2, option op2, capped at r4
    double vr2 = 0;           // -1: the bets are returned
    int op2 = 0;
    double r5 = 0, r6 = 0;    // extended closed bands (dividendos_ampliados)
    double vr3 = 0;
    int op3 = 0;
    double r7 = 0, r8 = 0;
    double vr4 = 0;
    int op4 = 0;

    // The rule applies when any of its amounts is set.
    bool activa() const { return vr1 != 0 || vr2 != 0 || vr3 != 0 || vr4 != 0; }
};

// Dead-heat handling (`empate`).
enum class ModoEmpate { LaMitad = 0, General = 1, GeneralMinimo = 2 };

struct ReglaDividendo {
    int divopc = 0;            // 0 rule mode; otherwise plain mode (D + valor_r1, capped at rango10)
    int mododiv = 0;           // 0 per unit; otherwise open bands counted per two units
    double rango[11] = {};     // rango1..rango10 (index 0 unused)
    double valor[6] = {};      // valor_r1..valor_r5
    int opcion[5] = {};        // opciondiv1..opciondiv4: 0 fixed, otherwise added to D
    double topefavorito = 0;   // cap when the winner is the favourite (0: none)
    int condicionado = 0;      // 1: pay the session's conditioned amount instead of any rule
    ReglaCorredores corredores[8];  // index 4..7
    int empate = 0;            // ModoEmpate
    double empatemin = 0;      // least dividend of a dead heat under "General + Minimo"
    double empateBanda[6] = {};  // empate1..empate5: least dividend of band 1..5 in that mode
    int redondear = 0;         // otherwise: a rule's dividend is rounded to whole units

    // The rule fields of a `grupos` or `dividendos` row; divopc and mododiv
    // always come from the group's row.
    static ReglaDividendo desde(const Row& regla, int divopc, int mododiv);
    // The extended runner-count bands of a `dividendos_ampliados` row.
    void ampliar(const Row& ampliados);
};

// What the processing knows when it turns D into X for one group and winner.
struct DatosDividendo {
    double oficial = 0;             // D
    int corredores = 0;             // runners (8 when four run and `ventas4` is 1)
    bool favorito = false;          // the winner is the race's favourite
    bool empate = false;            // dead heat: the race has two winners
    double condicionadoGrupo = 0;   // the group's conditioned amount for this winner (0: none)
    bool pagarOficial = false;      // the window's switch: pay the official dividend
    double montoCondicionado = 0;   // the setting `monto_condicionado`
};

struct DividendoGrupo {
    enum class Tipo { Pagar, Devolver, SinBanda };
    Tipo tipo = Tipo::SinBanda;
    double x = 0;                   // the group dividend (Pagar)
    bool porCondicionado = false;   // paid by the `condicionado` flag
};

// The group dividend X, in the order the rule is read: conditioned amount of
// the group, official dividend, plain mode, conditioned flag, runner-count
// rule, general bands, caps, favourite cap, dead heat, rounding. X is
// rounded to the cent.
DividendoGrupo calcularDividendo(const ReglaDividendo& regla, const DatosDividendo& datos);

// Rule columns, as `grupos` and `dividendos` name them (divopc and mododiv
// are only in `grupos`), and the extended columns of `dividendos_ampliados`.
const QStringList& columnasRegla();
const QStringList& columnasAmpliadas();
// Whole-number columns among them (options and switches).
bool columnaEntera(const QString& columna);

}  // namespace hipico
