#include "signin/MenuEntradas.h"

#include "subastas/DisenoSubasta.h"

namespace hipico {

using namespace nivel;

namespace {

const QString kVentas = QStringLiteral("&Ventas");
const QString kSubastas = QStringLiteral("S&ubastas");
const QString kCarreras = QStringLiteral("&Carreras");
const QString kAdministracion = QStringLiteral("&Administración");
const QString kGerencia = QStringLiteral("&Gerencia");
const QString kReportes = QStringLiteral("&Reportes");
const QString kPantallas = QStringLiteral("&Pantallas");
const QString kSistema = QStringLiteral("&Sistema");
const QString kSalir = QStringLiteral("Sa&lir");

// The administrator levels see every entry; the others see what their work needs.
QStringList admin(const QStringList& otros = {}) { return QStringList{AdministradorOculto, Administrador} + otros; }

}  // namespace

const QStringList& menusPrincipales() {
    static const QStringList menus = {kVentas,   kSubastas, kCarreras, kAdministracion, kGerencia,
                                      kReportes, kPantallas, kSistema, kSalir};
    return menus;
}

const QVector<EntradaMenu>& entradasMenu() {
    static const QVector<EntradaMenu> entradas = {
        // Booth sales.
        {"vg_menu", "Venta de Ganadores", kVentas, admin({Taquilla, Taquilla2, Total}), {}, "Ganadores"},
        {"tb_menu", "Venta de Tabla Fija", kVentas, admin({TablaFija, Taquilla2, Total}), {}, "Tabla Fija"},
        {"macuare_menu", "Venta de Macuare", kVentas, admin({Taquilla2, Total}), {}, "Macuare"},
        {"m_clientesj", "Ingreso de Jugadas", kVentas, admin({Taquilla, Taquilla2, Total}), {}, "Jugadas"},
        // Auctions.
        {"subasta_menu", "Subasta", kSubastas, admin({Remate, Total}), {}, "Subasta"},
        {"winremate_menu", "Ganador de Subasta", kSubastas, admin({Remate, Supervisor}), {}, {}},
        {"control61", "Reporte de Subastas por Fechas", kSubastas, admin({Remate, Socio, Gerente, Supervisor}), {}, {}},
        // Race card and results.
        {"carreras_menu", "Carreras y Caballos", kCarreras, admin(), {AdministradorOculto, Administrador}, {}},
        {"abrir_cerrar_menu", "Abrir y Cerrar Carreras", kCarreras, admin({Supervisor}),
         {AdministradorOculto, Administrador, Supervisor}, {}},
        {"rc_admin_menu", "Resultados de Carreras", kCarreras, admin({Socio, Gerente, Supervisor}), {}, {}},
        {"rctf_admin_menu", "Resultados de Tabla Fija", kCarreras, admin({Socio, Gerente, SupervisorTF, AdminTF}), {}, {}},
        {"dd_admin_menu", "Dividendos", kCarreras, admin({Socio, Gerente, Supervisor}), {}, {}},
        {"cuadre_gantf_menu", "Ganancia de Tabla Fija", kCarreras, admin({Socio, SupervisorTF, AdminTF}), {}, {}},
        {"imp_tfactual", "Tabla Fija de la Carrera Actual", kCarreras, admin({Supervisor, SupervisorTF, AdminTF}), {}, {}},
        // Pool administration.
        {"cg_menu", "Administración de Ganadores", kAdministracion, admin({Supervisor}),
         {AdministradorOculto, Administrador, Supervisor}, {}},
        {"ctf_menu", "Administración de Tabla Fija", kAdministracion, admin({AdminTF}),
         {AdministradorOculto, Administrador, AdminTF}, {}},
        {"admin_mc", "Administración de Macuare", kAdministracion, admin(), {}, {}},
        {"anular_menu", "Anular Boleto por Código", kAdministracion, admin({Gerente}), {Gerente, Administrador}, {}},
        // Management.
        {"vt_ger_menu", "Gerencia de Ganadores por Centro", kGerencia, admin({Socio, Gerente}), {}, {}},
        {"gh_menu", "Gerencia por Grupos", kGerencia, admin({Socio, Gerente}), {}, {}},
        {"gere_tf", "Gerencia de Tabla Fija", kGerencia, admin({Socio, Gerente, AdminTF}), {}, {}},
        // Reports.
        {"CT_ADMIN_MENU", "Cuadre de Taquilla Ganadores", kReportes,
         admin({Taquilla, Taquilla2, Total, Gerente, Supervisor}), {}, {}},
        {"tf_porTaquilla", "Cuadre de Taquilla Tabla Fija", kReportes,
         admin({TablaFija, Taquilla2, Total, Gerente, SupervisorTF, AdminTF}), {}, {}},
        {"rst_menu", "Resumen Semanal por Taquilla", kReportes, admin({Socio, Gerente, Supervisor}), {}, {}},
        {"gd_menu", "Resumen de Ventas Ganadores", kReportes, admin({Socio, Gerente, Supervisor}), {}, {}},
        {"diario_menu_tf", "Resumen de Ventas Tabla Fija", kReportes, admin({Socio, Gerente, SupervisorTF, AdminTF}), {}, {}},
        {"mc_rpt_diario", "Resumen de Ventas Macuare", kReportes, admin({Socio, Gerente}), {}, {}},
        {"rvc_pt_menu", "Resumen de Ventas Puestos", kReportes, admin({Socio, Gerente}), {}, {}},
        {"rvc_td_menu", "Resumen de Ventas Tabla Dinámica", kReportes, admin({Socio, Gerente}), {}, {}},
        {"resgrupos_menu", "Tabla Fija por Subgrupos", kReportes, admin({Socio, AdminTF}), {}, {}},
        {"rpt_gen_admin_menu", "Reporte General", kReportes, admin({Socio, Gerente}), {}, {}},
        {"gpc_rptgeneral", "Reporte General por Centro", kReportes, admin({Socio, Gerente}), {}, {}},
        {"bt_menu", "Bitácora de Ganadores", kReportes, admin({Gerente, Supervisor}), {}, {}},
        {"bit_tf_menu", "Bitácora de Tabla Fija", kReportes, admin({Gerente, SupervisorTF, AdminTF}), {}, {}},
        // Display screens.
        {"mc_pantalla", "Pantalla de Macuare", kPantallas, admin({Supervisor, Taquilla2, Total}), {}, {}},
        {"tbfija_pant_menu", "Pantalla de Tabla Fija", kPantallas,
         admin({Supervisor, SupervisorTF, AdminTF, TablaFija, Total}), {}, {}},
        // System.
        {"ch_menu_principal", "Centros Hípicos", kSistema, admin({Supervisor, AdminTF}),
         {AdministradorOculto, Administrador, QStringLiteral("Admin_TF"), Supervisor}, {}},
        {"grupos_menu", "Grupos", kSistema, admin(), {AdministradorOculto, Administrador}, {}},
        {"cu_menu", "Usuarios", kSistema, admin(), {AdministradorOculto, Administrador}, {}},
        {"User_gere", "Usuarios del Centro", kSistema, admin({Gerente}), {}, {}},
        {"bancos_menu", "Bancos", kSistema, admin(), {AdministradorOculto, Administrador}, {}},
        {"tipos_operacion_menu", "Tipos de Operación", kSistema, admin(), {AdministradorOculto, Administrador}, {}},
        {"ch_menu_grupo", "Cambiar de Grupo", kSistema, admin({Socio, Gerente, Supervisor}), {}, {}},
        {"configuracion_menu", "Configuración General", kSistema, admin(), {AdministradorOculto, Administrador}, {}},
        {"pimp_menu", "Configuración de Impresión", kSistema, todosLosNiveles(), {}, {}},
        {"bdlocalmenu", "Base de Datos Local", kSistema,
         admin({Socio, Gerente, Supervisor, SupervisorTF, AdminTF, Remate}), {}, {}},
        {"cerrar_menu", "Cerrar el Sistema", kSistema, todosLosNiveles(), {}, {}},
        {"salir_menu2", "Salir del Sistema", kSalir, todosLosNiveles(), {}, {}},
    };
    return entradas;
}

const EntradaMenu* buscarEntrada(const QString& nombre) {
    for (const EntradaMenu& e : entradasMenu())
        if (e.nombre == nombre) return &e;
    return nullptr;
}

bool esFuncionPropia(const QString& entrada) {
    static const QStringList propias = {"anular_menu", "bdlocalmenu", "cerrar_menu", "salir_menu2"};
    return propias.contains(entrada);
}

const QStringList& tablerosSubasta() {
    static const QStringList tableros = [] {
        QStringList nombres;
        for (const DisenoSubasta& d : disenosSubasta()) nombres << d.nombre;
        return nombres;
    }();
    return tableros;
}

}  // namespace hipico
