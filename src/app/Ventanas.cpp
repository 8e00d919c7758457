#include "app/Ventanas.h"

#include "admin/Form_Admin_Win.h"
#include "core/WindowRegistry.h"
#include "races/Form_AbrirCerrar.h"
#include "reportes/Form_Reporte.h"
#include "reportes/Lanzador.h"
#include "races/Form_Carreras.h"
#include "signin/Form_CambiarGrupo.h"
#include "signin/Form_ConfiguracionGeneral.h"
#include "sales/Form_ConfImpresion.h"
#include "sales/Form_RPT_CuadreTaqWIn.h"
#include "sales/Form_Venta_WIN.h"

namespace hipico {

void registrarVentanas(WindowRegistry& registro) {
    // One line per window: registro.add("entrada_menu", [](Context& ctx, QWidget* menu) { ... });
    registro.add("carreras_menu", [](Context& ctx, QWidget* menu) { return new Form_Carreras(ctx, menu); });
    registro.add("abrir_cerrar_menu", [](Context& ctx, QWidget* menu) { return new Form_AbrirCerrar(ctx, menu); });
    registro.add("ch_menu_grupo", [](Context& ctx, QWidget* menu) { return new Form_CambiarGrupo(ctx, menu); });
    registro.add("cg_menu", [](Context& ctx, QWidget* menu) { return new Form_Admin_Win(ctx, menu); });
    registro.add("vg_menu", [](Context& ctx, QWidget* menu) { return new Form_Venta_WIN(ctx, menu); });
    registro.add("pimp_menu", [](Context& ctx, QWidget* menu) { return new Form_ConfImpresion(ctx, menu); });
    registro.add("configuracion_menu",
                 [](Context& ctx, QWidget* menu) { return new Form_ConfiguracionGeneral(ctx, menu); });
    registro.add("CT_ADMIN_MENU", [](Context& ctx, QWidget* menu) { return new Form_RPT_CuadreTaqWIn(ctx, menu); });
    // Report windows: one description each, run by one report window.
    for (const DescripcionReporte& d : ventanasReporte())
        registro.add(d.entrada, [&d](Context& ctx, QWidget* menu) { return new Form_Reporte(ctx, d, menu); });
    registro.add("imp_tfactual", [](Context& ctx, QWidget* menu) { return crearReporte(ctx, 24, {}, menu); });
}

}  // namespace hipico
