#include "core/Session.h"

namespace hipico {

namespace {

QString texto(const Row& r, const QString& c) { return r.has(c) ? r.text(c) : QString(); }
double numero(const Row& r, const QString& c) { return r.has(c) ? r.number(c) : 0.0; }
int entero(const Row& r, const QString& c) { return r.has(c) ? static_cast<int>(r.integer(c)) : 0; }

void parametrosDelGrupo(Session& s, const Row& g) {
    s.noAut3t = entero(g, "no_aut_3t");
    s.ticketCobro = entero(g, "ticket_cobro");
    s.permitirpdiv = entero(g, "permitirpdiv");
    s.cupoviptf = entero(g, "cupoviptf");
    s.nameEmpresa = texto(g, "name_empresa");
    s.rifEmpresa = texto(g, "rif_empresa");
    s.direccionEmpresa = texto(g, "direccion_empresa");
    s.tlfEmpresa = texto(g, "tlf_empresa");
    s.anularBoletoWin = entero(g, "anular_boleto_win");
    s.cuatroCabVr2 = numero(g, "4cabvr2");
    s.clientes = entero(g, "clientes");
    s.duracionBoletos = entero(g, "duracionboletos");
    s.verBoletosTaq = entero(g, "VerBoletosTaq");
    s.apuestaMaxwin = entero(g, "apuesta_maxwin");
    s.reportTaqs = texto(g, "report_taqs");
    s.ccasarem = entero(g, "ccasarem");
    s.mascara = entero(g, "mascara");
    s.minBs = numero(g, "min_bs");
    s.minDol = numero(g, "min_dol");
    s.ganadores = entero(g, "ganadores");
    s.porRemate = texto(g, "por_remate");
    s.porRematador = texto(g, "por_rematador");
    s.grupoRow = g;
}

}  // namespace

double Session::parametro(const QString& columna) const { return numero(grupoRow, columna); }
QString Session::parametroTexto(const QString& columna) const { return texto(grupoRow, columna); }
double Session::ajuste(const QString& columna) const { return numero(configuracion, columna); }
QString Session::ajusteTexto(const QString& columna) const { return texto(configuracion, columna); }

QString tituloMenuPrincipal(const Session& s, const QString& estado) {
    QString quien = s.ch;
    if (!s.usuario.isEmpty()) quien += (quien.isEmpty() ? "" : " - ") + s.usuario;
    QString titulo = "MENU PRINCIPAL -  " + quien;
    if (!estado.isEmpty()) titulo += "   " + estado;
    return titulo;
}

void cargarIdentidad(Session& s, const Row& u) {
    s.idUsuario = u.has("id_usuario") ? u.integer("id_usuario") : 0;
    s.usuario = texto(u, "usuario");
    s.clave = texto(u, "clave");
    s.grupo = texto(u, "grupo");
    s.nivel = texto(u, "nivel");
    s.nombre = texto(u, "nombre");
    s.estatus = texto(u, "estatus");
    s.mac = texto(u, "mac");
    s.fechaIngreso = texto(u, "fecha_ingreso");
}

void cargarGrupoUsuario(Session& s, const Row& g) {
    s.ch = texto(g, "ch");
    s.subgrupo = texto(g, "subgrupo");
    s.bloqueo = entero(g, "bloqueo");
    s.subastas = entero(g, "Subastas");
}

void cargarSubgrupo(Session& s, const Row& sg) {
    s.subgrupoNombre = texto(sg, "nombre");
    s.subgrupo = texto(sg, "subgrupo");
}

void cargarConfiguracion(Session& s, const Row& c) {
    s.configuracion = c;
    s.fecha = texto(c, "fecha").left(10);
    s.version = numero(c, "version");
    s.permitirTf = entero(c, "permitir_tf");
    s.permitirMc = entero(c, "permitir_mc");
    s.mora = texto(c, "mora");
    s.mensaje = texto(c, "mensaje");
    s.web = texto(c, "web");
    s.centrarform = entero(c, "centrarform");
    s.empresa = texto(c, "empresa");
    s.modoventa = entero(c, "modoventa");
    s.funtdolar = entero(c, "funtdolar");
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
    s.grupo = texto(g, "grupo");
    s.ch = texto(g, "ch");
    s.subgrupo = texto(g, "subgrupo");
    parametrosDelGrupo(s, g);
}

void cargarConfLocal(Session& s, const Row& c) {
    s.confLocal.impresion = entero(c, "impresion");
    s.confLocal.puerto = texto(c, "puerto");
    s.confLocal.tamletra = entero(c, "tamletra");
    s.confLocal.codbarras = entero(c, "codbarras");
    s.confLocal.ipSecundaria = texto(c, "ip_secundaria");
    s.confLocal.grupo = texto(c, "grupo");
    s.confLocal.ip = texto(c, "ip");
    s.confLocal.server = texto(c, "server");
}

}  // namespace hipico
