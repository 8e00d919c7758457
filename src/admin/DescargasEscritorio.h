#pragma once

#include "admin/Escritorio.h"

#include <QString>
#include <optional>

namespace hipico {

// The desk's tab of the selected group's lay-off bets and conditioned amounts.
class DescargasGrupo : public ComandoEscritorio {
public:
    explicit DescargasGrupo(Context& ctx) : ComandoEscritorio(ctx) {}

    // A lay-off bet of the chosen group on the chosen race.
    bool registrarDescarga(const Seleccion& s, const QString& caballo, const QString& monto);
    struct Descargas {
        Recordset filas;
        double sumaganadores = 0;
        double sumacobrado = 0;
    };
    Descargas descargas(const Seleccion& s);

    // The dividend the chosen group pays on a horse of the chosen race.
    bool registrarCondicionado(const Seleccion& s, const QString& caballo, const QString& monto);
    Recordset condicionados(const Seleccion& s);
    bool eliminarCondicionado(long long id, const Alcance& alcance = {});

private:
    // The positive amount a row of the chosen group takes; a refusal says what is missing.
    std::optional<double> montoDelGrupo(const Seleccion& s, const QString& monto, const QString& titulo,
                                        const QString& invalido);
};

}  // namespace hipico
