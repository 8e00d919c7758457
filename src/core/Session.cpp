#include "core/Session.h"

namespace hipico {

namespace {


void parametrosDelGrupo(Session& s, const Row& g) {
    s.noAut3t = static_cast<int>(g.integerOr("no_aut_3t"));
    s.ticketCobro = static_cast<int>(g.integerOr("ticket_cobro"));
    s.permitirpdiv = static_cast<int>(g.integerOr("permitirpdiv"));
    s.cupoviptf = static_cast<int>(g.integerOr("cupoviptf"));
    s.nameEmpresa = g.textOr("name_empresa");
    s.rifEmpresa = g.textOr("rif_empresa");
    s.direccionEmpresa = g.textOr("direccion_empresa");
    s.tlfEmpresa = g.textOr("tlf_empresa");
    s.anularBoletoWin = static_cast<int>(g.integerOr("anular_boleto_win"));
    s.cuatroCabVr2 = g.numberOr("4cabvr2");
    s.clientes = static_cast<int>(g.integerOr("clientes"));
    s.duracionBoletos = static_cast<int>(g.integerOr("duracionboletos"));
    s.verBoletosTaq = static_cast<int>(g.integerOr("VerBoletosTaq"));
    s.apuestaMaxwin = static_cast<int>(g.integerOr("apuesta_maxwin"));
    s.reportTaqs = g.textOr("report_taqs");
    s.ccasarem = static_cast<int>(g.integerOr("ccasarem"));
    s.mascara = static_cast<int>(g.integerOr("mascara"));
    s.minBs = g.numberOr("min_bs");
    s.minDol = g.numberOr("min_dol");
    s.ganadores = static_cast<int>(g.integerOr("ganadores"));
    s.porRemate = g.textOr("por_remate");
    s.porRematador = g.textOr("por_rematador");
    s.grupoRow = g;
}

}  // namespace

double Session::parametro(const QString& columna) const { return grupoRow.numberOr(columna); }
QString Session::parametroTexto(const QString& columna) const { return grupoRow.textOr(columna); }
double Session::ajuste(const QString& columna) const { return configuracion.numberOr(columna); }
QString Session::ajusteTexto(const QString& columna) const { return configuracion.textOr(columna); }

QString tituloMenuPrincipal(const Session& s, const QString& estado) {
    QString quien = s.ch;
    if (!s.usuario.isEmpty()) quien += (quien.isEmpty() ? "" : " - ") + s.usuario;
    QString titulo = "MENU PRINCIPAL -  " + quien;
    if (!estado.isEmpty()) titulo += "   " + estado;
    return titulo;
}

void cargarIdentidad(Session& s, const Row& u) {
    s.idUsuario = u.has("id_usuario") ? u.integer("id_usuario") : 0;
    s.usuario = u.textOr("usuario");
    s.clave = u.textOr("clave");
    s.grupo = u.textOr("grupo");
    s.nivel = u.textOr("nivel");
    s.nombre = u.textOr("nombre");
    s.estatus = u.textOr("estatus");
    s.mac = u.textOr("mac");
    s.fechaIngreso = u.textOr("fecha_ingreso");
}

void cargarGrupoUsuario(Session& s, const Row& g) {
    s.ch = g.textOr("ch");
    s.subgrupo = g.textOr("subgrupo");
    s.bloqueo = static_cast<int>(g.integerOr("bloqueo"));
    s.subastas = static_cast<int>(g.integerOr("Subastas"));
}

void cargarSubgrupo(Session& s, const Row& sg) {
    s.subgrupoNombre = sg.textOr("nombre");
    s.subgrupo = sg.textOr("subgrupo");
}

void cargarConfiguracion(Session& s, const Row& c) {
    s.configuracion = c;
    s.fecha = c.textOr("fecha").left(10);
    s.version = c.numberOr("version");
    s.permitirTf = static_cast<int>(c.integerOr("permitir_tf"));
    s.permitirMc = static_cast<int>(c.integerOr("permitir_mc"));
    s.mora = c.textOr("mora");
    s.mensaje = c.textOr("mensaje");
    s.web = c.textOr("web");
    s.centrarform = static_cast<int>(c.integerOr("centrarform"));
    s.empresa = c.textOr("empresa");
    s.modoventa = static_cast<int>(c.integerOr("modoventa"));
    s.funtdolar = static_cast<int>(c.integerOr("funtdolar"));
}

bool cargarParametrosGrupo(Session& s, const Recordset& grupos) {
    const int i = grupos.find("grupo", s.grupo);
    if (i < 0) {
        parametrosDelGrupo(s, Row());
        return false;
    }
    parametrosDelGrupo(s, grupos[i]);
    return true;
}

void cambiarGrupo(Session& s, const Row& g) {
    s.grupo = g.textOr("grupo");
    s.ch = g.textOr("ch");
    s.subgrupo = g.textOr("subgrupo");
    parametrosDelGrupo(s, g);
}

void cargarConfLocal(Session& s, const Row& c) {
    s.confLocal.impresion = static_cast<int>(c.integerOr("impresion"));
    s.confLocal.puerto = c.textOr("puerto");
    s.confLocal.tamletra = static_cast<int>(c.integerOr("tamletra"));
    s.confLocal.codbarras = static_cast<int>(c.integerOr("codbarras"));
    s.confLocal.ipSecundaria = c.textOr("ip_secundaria");
    s.confLocal.grupo = c.textOr("grupo");
    s.confLocal.ip = c.textOr("ip");
    s.confLocal.server = c.textOr("server");
}

}  // namespace hipico
