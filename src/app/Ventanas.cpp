#include "app/Ventanas.h"

#include "admin/Form_Admin_MC.h"
#include "admin/Form_Admin_TF.h"
#include "admin/Form_Admin_Win.h"
#include "admin/Form_Gerencia.h"
#include "admin/Form_GerenciaTF.h"
#include "core/WindowRegistry.h"
#include "masterdata/Form_Hipicos.h"
#include "masterdata/Form_TablaDeNombres.h"
#include "masterdata/Form_Usuarios.h"
#include "races/Form_AbrirCerrar.h"
#include "races/Form_Carreras.h"
#include "reportes/Form_Reporte.h"
#include "reportes/Lanzador.h"
#include "signin/Form_CambiarGrupo.h"
#include "signin/Form_ConfiguracionGeneral.h"
#include "sales/Form_ConfImpresion.h"
#include "sales/Form_IngresoJugadas.h"
#include "sales/Form_RPT_CuadreTaqWIn.h"
#include "sales/Form_Pant_TF.h"
#include "sales/Form_Venta_MC.h"
#include "sales/Form_Venta_TF.h"
#include "sales/Form_Venta_WIN.h"
#include "subastas/Form_Admin_Remate.h"
#include "subastas/Form_RptSubasta_Fechas.h"
#include "subastas/Form_Subasta.h"

namespace hipico {

void registrarVentanas(WindowRegistry& registro) {
    // One line per window: registro.add("entrada_menu", [](Context& ctx, QWidget* menu) { ... });
    registro.add("carreras_menu", [](Context& ctx, QWidget* menu) { return new Form_Carreras(ctx, menu); });
    registro.add("abrir_cerrar_menu", [](Context& ctx, QWidget* menu) { return new Form_AbrirCerrar(ctx, menu); });
    registro.add("ch_menu_grupo", [](Context& ctx, QWidget* menu) { return new Form_CambiarGrupo(ctx, menu); });
    registro.add("cg_menu", [](Context& ctx, QWidget* menu) { return new Form_Admin_Win(ctx, menu); });
    registro.add("vt_ger_menu", [](Context& ctx, QWidget* menu) { return new Form_Geren_Ganadores(ctx, menu); });
    registro.add("gh_menu", [](Context& ctx, QWidget* menu) { return new Form_Gerencia_Grupos(ctx, menu); });
    registro.add("vg_menu", [](Context& ctx, QWidget* menu) { return new Form_Venta_WIN(ctx, menu); });
    registro.add("pimp_menu", [](Context& ctx, QWidget* menu) { return new Form_ConfImpresion(ctx, menu); });
    registro.add("configuracion_menu",
                 [](Context& ctx, QWidget* menu) { return new Form_ConfiguracionGeneral(ctx, menu); });
    registro.add("m_clientesj", [](Context& ctx, QWidget* menu) { return new Form_IngresoJugadas(ctx, menu); });
    registro.add("ch_menu_principal", [](Context& ctx, QWidget* menu) { return new Form_Hipicos(ctx, menu); });
    registro.add("grupos_menu", [](Context& ctx, QWidget* menu) { return new Form_Hipicos(ctx, menu); });
    registro.add("cu_menu", [](Context& ctx, QWidget* menu) { return new Form_Usuarios(ctx, menu); });
    registro.add("User_gere", [](Context& ctx, QWidget* menu) { return new Form_Usuarios(ctx, menu); });
    registro.add("bancos_menu", [](Context& ctx, QWidget* menu) { return new Form_TablaDeNombres(ctx, kBancos, menu); });
    registro.add("tipos_operacion_menu",
                 [](Context& ctx, QWidget* menu) { return new Form_TablaDeNombres(ctx, kTiposOperacion, menu); });
    registro.add("CT_ADMIN_MENU", [](Context& ctx, QWidget* menu) { return new Form_RPT_CuadreTaqWIn(ctx, menu); });
    // Macuare: the sale, its administration and its display screen.
    registro.add("macuare_menu", [](Context& ctx, QWidget* menu) { return new Form_Venta_MC(ctx, menu); });
    registro.add("admin_mc", [](Context& ctx, QWidget* menu) { return new Form_Admin_MC(ctx, menu); });
    registro.add("mc_pantalla", [](Context& ctx, QWidget* menu) { return new Form_Pant_MC(ctx, menu); });
    // Auctions: every board under its own name, the winner and the report by dates.
    for (const DisenoSubasta& d : disenosSubasta())
        registro.add(d.nombre, [&d](Context& ctx, QWidget* menu) { return new Form_Subasta(ctx, d, menu); });
    registro.add("winremate_menu", [](Context& ctx, QWidget* menu) { return new Form_Admin_Remate(ctx, menu); });
    registro.add("control61", [](Context& ctx, QWidget* menu) { return new Form_RptSubasta_Fechas(ctx, menu); });
    // Report windows: one description each, run by one report window.
    for (const DescripcionReporte& d : ventanasReporte())
        registro.add(d.entrada, [&d](Context& ctx, QWidget* menu) { return new Form_Reporte(ctx, d, menu); });
    // The fixed-table game.
    registro.add("tb_menu", [](Context& ctx, QWidget* menu) { return new Form_Venta_TF(ctx, menu); });
    registro.add("ctf_menu", [](Context& ctx, QWidget* menu) { return new Form_Admin_TF(ctx, menu); });
    registro.add("tbfija_pant_menu", [](Context& ctx, QWidget* menu) { return Form_Pant_TF::crear(ctx, menu); });
    registro.add("gere_tf", [](Context& ctx, QWidget* menu) { return new Form_GerenciaTF(ctx, menu); });
    registro.add("imp_tfactual", [](Context& ctx, QWidget* menu) { return crearReporte(ctx, 24, {}, menu); });
}

}  // namespace hipico
