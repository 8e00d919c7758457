#pragma once

#include "core/Recordset.h"

#include <QDate>
#include <QString>
#include <optional>

namespace hipico {

// Ticket codes and the tamper keys of winner-bet tickets. The sale writes
// llave, llave2 and llave5; results processing writes llave3 and llave6; the
// booth's payment lookup checks them all before it pays.

// Prefix of a winner ticket's code: "1" when the group's inicialboleto is 0,
// else the group code.
QString prefijoBoleto(int inicialboleto, const QString& grupo);
// prefix + sale month "MM" + sale day "DD" + numero (group 07, 15 November, 4521: "0711154521").
QString codigoBoleto(const QString& prefijo, const QDate& fechaVenta, long long numero);

// How units and dividends are written into keys: the shortest exact text of the number.
QString textoNumero(double valor);

struct LlavesVenta {
    QString llave;   // horse
    QString llave2;  // units
    QString llave5;  // race
};
// With K the group code: llave = cipher(numero, horse & K & numero),
// llave2 = cipher(numero, units & K & numero), llave5 = cipher(numero, race & K & numero).
LlavesVenta llavesVenta(long long numero, long long caballo, double ganadores, long long carrera, const QString& grupo);

// Result keys of a winning ticket, both under the master key: llave3 holds the
// group's dividend X; llave6 the group's settlement (group, race, horse, X).
QString llave3Premio(double dividendoGrupo);
QString llave6Liquidacion(const QString& grupo, long long carrera, long long caballo, double dividendoGrupo);

enum class Alteracion { Ninguna, Caballo, Carrera, Unidades, Premio, CopiaGrupo };

// The tamper checks of the payment lookup, in their order, on a ticket row of
// ma_principal (and its group copy in ventas_ganadores when there is one).
// A winner (status 1) must carry a payout equal to its units times the group
// dividend enciphered in llave3, and a llave6 that matches the ticket's group,
// race and horse.
Alteracion verificarBoleto(const Row& boleto, const std::optional<Row>& copiaGrupo);
// The message the booth shows for each alteration (title "Seguridad del Sistema"); "" for none.
QString mensajeAlteracion(Alteracion a);

}  // namespace hipico
