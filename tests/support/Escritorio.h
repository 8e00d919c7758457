#pragma once

// The winners desk's commands on one context, for the tests.
#include "admin/BoletosEscritorio.h"
#include "admin/CarreraEscritorio.h"
#include "admin/CentroEscritorio.h"
#include "admin/DescargasEscritorio.h"

namespace hipico::test {

struct Escritorio {
    explicit Escritorio(Context& ctx)
        : opciones(ctx), ventas(ctx), tarjeta(ctx), resultado(ctx), cupos(ctx), regla(ctx), descargas(ctx),
          boletos(ctx) {}
    OpcionesEscritorio opciones;
    VentasCarrera ventas;
    TarjetaCarrera tarjeta;
    ResultadoCarrera resultado;
    CuposCentro cupos;
    ReglaCentro regla;
    DescargasGrupo descargas;
    BoletosEscritorio boletos;
};

}  // namespace hipico::test
