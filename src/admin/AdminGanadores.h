#pragma once

#include "admin/CarreraEscritorio.h"

namespace hipico {

// The desk's result processing under its former name, for the one caller
// not yet on the desk's commands (the whole-program day test): the selection
// as fields, processing as its one command. New code runs ResultadoCarrera
// with a Seleccion; this header goes once that caller does.
class AdminGanadores : public Seleccion {
public:
    explicit AdminGanadores(Context& ctx) : Seleccion(seleccionInicial(ctx)), resultado_(ctx) {}
    bool procesarCarrera(const QString& ganador, const QString& dividendo) {
        return resultado_.procesar(*this, ganador, dividendo).has_value();
    }

private:
    ResultadoCarrera resultado_;
};

}  // namespace hipico
