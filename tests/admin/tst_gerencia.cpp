// The managers' commands: the desk's commands inside a scope (one group, or
// the groups of one subgroup), and the manager's own functions. The scope is
// a boundary: nothing of another group or subgroup is listed, changed or
// voided, also when its ticket code is typed.
#include "support/Boletos.h"
#include "admin/BoletosEscritorio.h"
#include "admin/CarreraEscritorio.h"
#include "admin/CentroEscritorio.h"
#include "admin/DescargasEscritorio.h"
#include "admin/GerenciaEscritorio.h"
#include "subastas/AdministracionSubasta.h"
#include "subastas/DisenoSubasta.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

Q_DECLARE_METATYPE(hipico::Alcance)

class TstGerencia : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QDate hoy;
    QString fecha;

    Db& db() { return env->db(); }
    ScriptedDialogs& dlg() { return env->dialogs; }
    double contar(const std::string& sql, const Params& p = {}) { return numberOf(db(), sql, p); }

    Seleccion en(const Alcance& a, long long carrera = 1, const QString& centro = "TODOS",
                 const QString& grupo = "TODOS") {
        return seleccionDePrueba(env->ctx, carrera, centro, grupo, a);
    }

    void esperar(const QString& titulo, const QString& texto, Icon icono = Icon::Critical) {
        esperarCaja(dlg(), titulo, texto, icono);
    }

    // One ticket of each group on race 1 (horse 3) and race 2 (horse 1):
    // group 07 and 08 are LOS PINOS (ORIENTE), 12 and 15 MARACAY (OCCIDENTE).
    QMap<QString, BoletoDePrueba> sembrar() {
        db().exec("DELETE FROM ma_principal");
        QMap<QString, BoletoDePrueba> b;
        b["07"] = venderBoleto(db(), hoy, 1, 3, 2, "07", "LOS PINOS");
        b["08"] = venderBoleto(db(), hoy, 1, 3, 5, "08", "LOS PINOS");
        b["12"] = venderBoleto(db(), hoy, 1, 3, 11, "12", "MARACAY");
        b["15"] = venderBoleto(db(), hoy, 1, 4, 17, "15", "MARACAY");
        venderBoleto(db(), hoy, 2, 1, 1, "07", "LOS PINOS", 1, 30);
        venderBoleto(db(), hoy, 2, 1, 1, "07", "LOS PINOS", 2, 40);
        venderBoleto(db(), hoy, 2, 1, 1, "12", "MARACAY", 1, 70);
        return b;
    }

    // The centre of the scope's groups the tests work on.
    QString centroDe(const Alcance& a) { return contieneCentro(db(), a, "LOS PINOS") ? "LOS PINOS" : "MARACAY"; }

    // Race 1's auction rows of both centres, as a board creates them.
    void remates() {
        db().exec("DELETE FROM carreras_remate");
        std::vector<Insercion> filas;
        for (const char* ch : {"LOS PINOS", "MARACAY"})
            for (const Row& c : db().query("SELECT caballo, nu_caballo FROM carreras WHERE fecha = ? AND carrera = 1 "
                                           "AND id_hipodromo = 1 ORDER BY id_carrera",
                                           {fecha}))
                filas.push_back(FilaRemate{fecha, 1, c.text("caballo"), c.integer("nu_caballo"), 0, ch, 20}.insercion());
        insertarFilas(db(), filas);
    }
    QStringList remateDe(const QString& ch) {
        QStringList out;
        for (const Row& r : db().query("SELECT * FROM carreras_remate WHERE ch = ? ORDER BY id_carrera", {ch}))
            out << r.text("tabla1") + "|" + r.text("mesa1") + "|" + r.text("pote") + "|" + r.text("win") + "|" +
                       r.text("segundolugar") + "|" + r.text("monto_casa");
        return out;
    }

    // The scopes every boundary test runs in: a group inside it and one outside.
    void escenarios() {
        QTest::addColumn<Alcance>("alcance");
        QTest::addColumn<QString>("dentro");
        QTest::addColumn<QString>("fuera");
        QTest::addColumn<QString>("centroFuera");
        QTest::addColumn<double>("unidades");  // race 1 sold inside the scope
        QTest::addColumn<double>("dia");       // the day sold inside the scope
        QTest::newRow("grupo 07, su vecino del centro")
            << Alcance::grupo("07") << "07" << "08" << "MARACAY" << 2.0 << 4.0;
        QTest::newRow("grupo 07, otro subgrupo") << Alcance::grupo("07") << "07" << "12" << "MARACAY" << 2.0 << 4.0;
        QTest::newRow("subgrupo ORIENTE") << Alcance::subgrupo("ORIENTE") << "08" << "12" << "MARACAY" << 7.0 << 9.0;
        QTest::newRow("subgrupo OCCIDENTE")
            << Alcance::subgrupo("OCCIDENTE") << "15" << "07" << "LOS PINOS" << 28.0 << 29.0;
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("gerencia", true);
        env->loadDemo();
        env->signIn("gerente");
        hoy = env->clock.today();
        fecha = fechaSql(hoy);
    }

    void init() { dlg().clear(); }
    void cleanup() { cerrarDialogos(dlg()); }

    void scopesFromTheSession() {
        QCOMPARE(alcanceGrupo(env->ctx.session), Alcance::grupo("07"));
        QCOMPARE(alcanceSubgrupo(env->ctx.session), Alcance::subgrupo("ORIENTE"));
    }

    void choicesInScope() {
        OpcionesEscritorio o(env->ctx);
        QCOMPARE(o.centros(Alcance::grupo("07")), (QStringList{"TODOS", "LOS PINOS"}));
        QCOMPARE(o.grupos("TODOS", Alcance::grupo("07")), (QStringList{"TODOS", "07"}));
        QCOMPARE(o.grupos("TODOS", Alcance::subgrupo("OCCIDENTE")), (QStringList{"TODOS", "12", "15"}));
        QCOMPARE(o.grupos("LOS PINOS", Alcance::subgrupo("OCCIDENTE")), (QStringList{"TODOS"}));
        QCOMPARE(o.centros(), (QStringList{"TODOS", "LOS PINOS", "MARACAY"}));
        // Booth users: a group of another scope lists nobody.
        QCOMPARE(o.taquillasDelGrupo(en(Alcance::grupo("07"), 1, "TODOS", "12")).size(), 0);
        QCOMPARE(o.taquillasDelGrupo(en(Alcance::subgrupo("OCCIDENTE"), 1, "TODOS", "12")).size(), 1);
    }

    void salesInScope_data() { escenarios(); }
    void salesInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, fuera);
        QFETCH(double, unidades);
        sembrar();
        VentasCarrera v(env->ctx);
        for (auto conteo : {VentasCarrera::Conteo::TerminoDevoluciones, VentasCarrera::Conteo::Todos,
                            VentasCarrera::Conteo::SinAnulados})
            QCOMPARE(v.ventasPorCaballo(en(alcance), conteo).unidades, unidades);
        // Choosing a group of another scope shows nothing of it.
        QCOMPARE(v.ventasPorCaballo(en(alcance, 1, "TODOS", fuera)).unidades, 0.0);
        // Race 1 sells, race 2 is closed.
        QVERIFY(!v.ventasPorCaballo(en(alcance), VentasCarrera::Conteo::Todos).cerrada);
        QVERIFY(v.lineasVentas(v.ventasPorCaballo(en(alcance, 2), VentasCarrera::Conteo::Todos)).endsWith("CERRADO"));
        // The day: sold units and paid and due money of the scope only.
        const auto d = v.ventasDelDia(en(alcance));
        QFETCH(double, dia);
        QCOMPARE(d.unidades, dia);
    }

    void ticketSearchInScope_data() { escenarios(); }
    void ticketSearchInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, dentro);
        QFETCH(QString, fuera);
        sembrar();
        BoletosEscritorio b(env->ctx);
        const auto& g = BoletosEscritorio::consultaGerencia();
        // Races 1 to 2 of the scope: every row of it, none of another.
        const auto todas = b.buscar(en(alcance), "TODAS", {}, false, g, 2);
        QVERIFY(todas);
        for (const Row& r : todas->filas) QVERIFY(contieneGrupo(db(), alcance, r.text("grupo")));
        QVERIFY(std::any_of(todas->filas.begin(), todas->filas.end(),
                            [&](const Row& r) { return r.text("grupo") == dentro; }));
        // " DOLARS ": units times the unit price (10).
        QCOMPARE(todas->sumadolares, todas->sumaganadores * 10);
        // A group of another scope chosen: nothing found.
        QVERIFY(!b.buscar(en(alcance, 1, "TODOS", fuera), "TODAS", {}, false, g, 2));
        esperar(" Busqueda ", "No se encontro Ningun registro", Icon::Information);
    }

    void managerSearchSums() {
        sembrar();
        venderBoleto(db(), hoy, 2, 1, 1, "07", "LOS PINOS", 3, 10);
        venderBoleto(db(), hoy, 2, 1, 1, "07", "LOS PINOS", 4, 10);
        BoletosEscritorio b(env->ctx);
        const auto& g = BoletosEscritorio::consultaGerencia();
        QCOMPARE(g.clases, (QStringList{"POR PAGAR", "PAGADOS", "RET PAGADO", "RET POR PAGAR", "NO GANADORES", "TODAS"}));
        const auto r = b.buscar(en(Alcance::grupo("07"), 2), "TODAS", {}, false, g, 2);
        QVERIFY(r);
        QCOMPARE(r->filas.size(), 4);
        QCOMPARE(r->sumacobrado, 40.0);    // (estatus=2) only
        QCOMPARE(r->sumaporcobrar, 30.0);  // (estatus=1) only
        QCOMPARE(b.buscar(en(Alcance::grupo("07"), 2), "RET PAGADO", {}, false, g, 2)->filas.size(), 1);
        // The desk's sums of the same tickets: paid 2 and 3, due 1 and 4.
        const auto e = b.buscar(en(Alcance::grupo("07"), 2), "TODAS", {}, false);
        QCOMPARE(e->sumacobrado, 50.0);
        QCOMPARE(e->sumaporcobrar, 40.0);
        // Races as a range: 1 to 2.
        QCOMPARE(b.buscar(en(Alcance::grupo("07"), 1), "TODAS", {}, false, g, 2)->filas.size(), 5);
        // Printed: the local ticket table holds the scope's tickets.
        const auto p = b.reporteBusqueda(en(Alcance::grupo("07"), 1), "TODAS", {}, false, g, 2);
        QVERIFY(p);
        QCOMPARE(numberOf(env->ctx.local(), "SELECT count(*) FROM rpt_jugadas"), 5.0);
        QCOMPARE(numberOf(env->ctx.local(), "SELECT count(*) FROM rpt_jugadas WHERE grupo <> '07'"), 0.0);
    }

    void voidByTypedCode_data() { escenarios(); }
    void voidByTypedCode() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, dentro);
        QFETCH(QString, fuera);
        const auto b = sembrar();
        BoletosEscritorio c(env->ctx);
        // Another scope's ticket, by its code: not found, still there, nothing logged.
        const double bitacora = contar("SELECT count(*) FROM bitacora");
        dlg().type(b[fuera].codigo);
        QVERIFY(!c.anularGerencia(alcance, false));
        QCOMPARE(dlg().shown().first().text, QString("INGRESE EL CODIGO DEL BOLETO DE GANADORES"));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR");
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE numero = ?", {b[fuera].numero}), 1.0);
        // The second void, by number with the override code, neither.
        dlg().type("QWPLR850264");
        QVERIFY(!c.anularPorNumero(b[fuera].numero, alcance));
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE numero = ?", {b[fuera].numero}), 1.0);
        QCOMPARE(contar("SELECT count(*) FROM bitacora"), bitacora);
        // The scope's own ticket goes, with the reason asked when the group says so.
        dlg().type(b[dentro].codigo).type("ERROR DE TAQUILLA");
        QVERIFY(c.anularGerencia(alcance, true));
        esperar("Administración del Sistema", "BOLETO ANULADO CON EXITO", Icon::Information);
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE numero = ?", {b[dentro].numero}), 0.0);
        QCOMPARE(textOf(db(), "SELECT motivo FROM bitacora WHERE nu_boleto = ?", {b[dentro].codigo}),
                 QString("ERROR DE TAQUILLA"));
    }

    void managerVoidRefusals() {
        const auto b = sembrar();
        BoletosEscritorio c(env->ctx);
        const long long otra = venderBoleto(db(), hoy, 2, 1, 1, "07", "LOS PINOS");
        const QString codigo = textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE numero = ?", {otra});
        // Race 2 no longer sells.
        dlg().type(codigo);
        QVERIFY(!c.anularGerencia(Alcance::grupo("07"), false));
        esperar("Administración del Sistema", "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS");
        // Race 1 processed.
        liquidar(db(), fecha, 1, 3, 4.0);
        dlg().type(b["07"].codigo);
        QVERIFY(!c.anularGerencia(Alcance::grupo("07"), false));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
        // The second void takes the override code.
        dlg().type("QWPLR850264");
        QVERIFY(c.anularPorNumero(b["07"].numero, Alcance::grupo("07")));
        db().exec("UPDATE carreras SET dividendo = 0, win_ganadores = 0, win = 0");
    }

    void voidCombinationInScope_data() { escenarios(); }
    void voidCombinationInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, dentro);
        QFETCH(QString, fuera);
        db().exec("DELETE FROM macuares");
        db().exec("INSERT INTO macuares (boleto, fecha, monto, estatus, grupo) VALUES ('5100', ?, 10, 0, ?), "
                  "('5200', ?, 10, 0, ?)",
                  {fecha, dentro, fecha, fuera});
        // The day's Macuare: its first leg open for sale.
        db().exec("INSERT IGNORE INTO macuare_dias (fecha) VALUES (?)", {fecha});
        db().exec("UPDATE carreras SET venta_mc = 1 WHERE fecha = ? AND carrera = 1", {fecha});
        db().exec("UPDATE configuracion SET venta_macuare = 1");
        BoletosEscritorio c(env->ctx);
        dlg().type("5200");
        QVERIFY(!c.anularMacuare(alcance));
        esperar("ANULACION DE MACUARES", "EL BOLETO NO SE PUEDE ANULAR");
        dlg().type("5100");
        QVERIFY(c.anularMacuare(alcance));
        QCOMPARE(textOf(db(), "SELECT group_concat(boleto) FROM macuares"), QString("5200"));
    }

    void limitsInScope_data() { escenarios(); }
    void limitsInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, centroFuera);
        db().exec("UPDATE venta_cupo_ganadores SET cab1=7, cab2=7, cab3=7, cab4=7, cab5=7, cab6=7, cab7=7, cab8=7, "
                  "cab9=7, cab10=7, cab11=7, cab12=7, cab13=7, cab14=7, cab15=9, cab16=9");
        CuposCentro c(env->ctx);
        const QString centro = contieneCentro(db(), alcance, "LOS PINOS") ? "LOS PINOS" : "MARACAY";
        auto suma = [&](const QString& ch) {
            return contar("SELECT cab1+cab2+cab3+cab4+cab5+cab6+cab7+cab8+cab9+cab10+cab11+cab12+cab13+cab14 FROM "
                          "venta_cupo_ganadores WHERE ch = ?",
                          {ch});
        };
        // Another scope's centre: not read, not blocked, not restored, not edited.
        QVERIFY(!c.leer(en(alcance, 1, centroFuera)));
        c.bloquear(en(alcance, 1, centroFuera));
        c.restaurar(en(alcance, 1, centroFuera));
        c.guardarCupo(en(alcance, 1, centroFuera), 1, "1");
        QVERIFY(!c.guardarCupos(en(alcance, 1, centroFuera), QStringList(16, "1")));
        dlg().clear();
        QCOMPARE(suma(centroFuera), 98.0);
        // The own centre: blocked to 0 and restored to the track's `cupo`, 15 and 16 kept.
        QVERIFY(c.bloquear(en(alcance, 1, centro)));
        QCOMPARE(suma(centro), 0.0);
        QCOMPARE(contar("SELECT cab15 + cab16 FROM venta_cupo_ganadores WHERE ch = ?", {centro}), 18.0);
        QVERIFY(c.restaurar(en(alcance, 1, centro)));
        QCOMPARE(suma(centro), 14 * 500.0);
        QCOMPARE(contar("SELECT cab15 + cab16 FROM venta_cupo_ganadores WHERE ch = ?", {centro}), 18.0);
        QCOMPARE(suma(centroFuera), 98.0);
        QVERIFY(c.leer(en(alcance, 1, centro)));
    }

    void auctionInScope_data() { escenarios(); }
    void auctionInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, dentro);
        QFETCH(QString, fuera);
        QFETCH(QString, centroFuera);
        remates();
        const QString centro = centroDe(alcance);
        const QStringList ajeno = remateDe(centroFuera);
        const long long idAjeno =
            Row::toInteger(db().scalar("SELECT min(id_carrera) FROM carreras_remate WHERE ch = ?", {centroFuera}));
        CeldasSubasta c(env->ctx);
        // Another scope's centre chosen: nothing listed, no cell written, no winner set.
        QCOMPARE(c.cargar(en(alcance, 1, centroFuera)).size(), 0);
        for (const char* celda : {"tabla1", "mesa1", "pote"}) {
            QVERIFY(!c.escribir(en(alcance, 1, centroFuera), idAjeno, celda, "100"));
            esperar(kTituloSubasta, "DEBE ELEGIR UN CENTRO DE LA LISTA");
        }
        QVERIFY(!c.cambiarGanador(en(alcance, 1, centroFuera), "3"));
        esperar("Modificacion del Ganador", "LA CARRERA NO TIENE SUBASTA");
        // The own centre chosen with another centre's row: that row stays.
        c.escribir(en(alcance, 1, centro), idAjeno, "tabla1", "100");
        // Every centre of the scope: only its rows take the winner.
        QVERIFY(c.cambiarGanador(en(alcance), "3"));
        QCOMPARE(remateDe(centroFuera), ajeno);
        QCOMPARE(contar("SELECT count(*) FROM carreras_remate WHERE ch = ? AND win = 3 AND segundolugar = 3", {centro}),
                 8.0);
        // The own centre's cells are listed and written.
        const Recordset propias = c.cargar(en(alcance, 1, centro));
        QCOMPARE(propias.size(), 8);
        QVERIFY(c.escribir(en(alcance, 1, centro), propias[0].integer("id_carrera"), "tabla1", "150"));
        QCOMPARE(contar("SELECT sum(tabla1) FROM carreras_remate WHERE ch = ?", {centro}), 150.0);
        QCOMPARE(remateDe(centroFuera), ajeno);
        // The percentages of a group of another scope are not shown.
        QVERIFY(c.porcentajes(en(alcance, 1, "TODOS", fuera)).isEmpty());
        QVERIFY(c.porcentajes(en(alcance, 1, "TODOS", dentro)).first().startsWith("Porcentaje del remate: "));
    }

    void restoreWithoutRule() {
        db().exec("DELETE FROM dividendos WHERE ch = 'LOS PINOS' AND id_hipodromo = 2");
        Seleccion s = en(Alcance::grupo("07"), 1, "LOS PINOS");
        s.hipodromo = "SANTA RITA";
        const QStringList antes = foto(db(), {"venta_cupo_ganadores", "dividendos", "dividendos_ampliados", "grupos"});
        QVERIFY(!CuposCentro(env->ctx).restaurar(s));
        esperar("Verifique e intente nuevamente", "El Hipodromo seleccionado no presenta registros de dividendos");
        // With the per-track option the manager's rule of that track: nothing to read or save.
        env->ctx.session.modoventa = 1;
        ReglaCentro r(env->ctx);
        dlg().clear();
        QVERIFY(r.leer(s).isEmpty());
        QCOMPARE(dlg().count(), 0);  // told only when asked to
        QVERIFY(r.leer(s, true).isEmpty());
        esperar("Verifique e intente nuevamente", "El Hipodromo seleccionado no presenta registros de dividendos");
        Seleccion rinconada = s;
        rinconada.hipodromo = "LA RINCONADA";
        QMap<QString, QString> campos = r.leer(rinconada);
        QVERIFY(!campos.isEmpty());
        QVERIFY(!r.guardar(s, campos));
        esperar("Verifique e intente nuevamente", "El Hipodromo seleccionado no presenta registros de dividendos");
        QCOMPARE(foto(db(), {"venta_cupo_ganadores", "dividendos", "dividendos_ampliados", "grupos"}), antes);
        // The administrator's desk starts the track's rule.
        Seleccion red = s;
        red.alcance = {};
        QVERIFY(r.guardar(red, campos));
        QCOMPARE(contar("SELECT count(*) FROM dividendos WHERE ch = 'LOS PINOS' AND id_hipodromo = 2"), 1.0);
        env->ctx.session.modoventa = 0;
    }

    void ruleInScope() {
        ReglaCentro r(env->ctx);
        // Another scope's centre: nothing read, saving refused.
        QVERIFY(r.leer(en(Alcance::grupo("07"), 1, "MARACAY")).isEmpty());
        QMap<QString, QString> campos = r.leer(en(Alcance::grupo("07"), 1, "LOS PINOS"));
        QVERIFY(!campos.isEmpty());
        campos["valor_r1"] = "4";
        QVERIFY(!r.guardar(en(Alcance::grupo("07"), 1, "MARACAY"), campos));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "DEBE SELECCIONAR UN CENTRO HIPICO");
        QCOMPARE(contar("SELECT valor_r1 FROM grupos WHERE grupo = '12'"), 3.0);
        // "General + Minimo" without a minimum.
        campos["empate"] = "2";
        campos["empatemin"] = "0";
        QVERIFY(!r.guardar(en(Alcance::grupo("07"), 1, "LOS PINOS"), campos));
        esperar("VERIFICAR SELECCION", "DEBE SELECCIONAR UNA OPCION CORRECTA EN EL MINIMO");
        campos["empatemin"] = "2,5";
        QVERIFY(r.guardar(en(Alcance::grupo("07"), 1, "LOS PINOS"), campos));
        QCOMPARE(contar("SELECT valor_r1 FROM grupos WHERE grupo = '07'"), 4.0);
        QCOMPARE(contar("SELECT valor_r1 FROM grupos WHERE grupo = '12'"), 3.0);
    }

    void layOffsAndConditionedInScope_data() { escenarios(); }
    void layOffsAndConditionedInScope() {
        QFETCH(Alcance, alcance);
        QFETCH(QString, dentro);
        QFETCH(QString, fuera);
        db().exec("DELETE FROM descargas");
        db().exec("DELETE FROM condicionados");
        DescargasGrupo d(env->ctx);
        QVERIFY(!d.registrarDescarga(en(alcance, 1, "TODOS", fuera), "2", "5"));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "DEBE SELECCIONAR UN GRUPO");
        QVERIFY(!d.registrarCondicionado(en(alcance, 1, "TODOS", fuera), "2", "5"));
        QVERIFY(d.registrarDescarga(en(alcance, 1, "TODOS", dentro), "2", "5"));
        QVERIFY(d.registrarCondicionado(en(alcance, 1, "TODOS", dentro), "2", "5"));
        QCOMPARE(contar("SELECT count(*) FROM descargas"), 1.0);
        // Rows of another scope are neither listed nor deleted.
        insertar(db(), Descarga{fecha, "10:00:00", "X", fuera, 1, 2, 9, 0}.insercion());
        insertar(db(), Condicionado{"X", fuera, "S9", fecha, 1, 2, 9}.insercion());
        QCOMPARE(d.descargas(en(alcance)).filas.size(), 1);
        QCOMPARE(d.descargas(en(alcance)).sumaganadores, 5.0);
        QCOMPARE(d.condicionados(en(alcance, 1, "TODOS", fuera)).size(), 0);
        const long long ajeno =
            Row::toInteger(db().scalar("SELECT id_condicionado FROM condicionados WHERE grupo = ?", {fuera}));
        QVERIFY(!d.eliminarCondicionado(ajeno, alcance));
        QCOMPARE(contar("SELECT count(*) FROM condicionados"), 2.0);
        const long long propio =
            Row::toInteger(db().scalar("SELECT id_condicionado FROM condicionados WHERE grupo = ?", {dentro}));
        QVERIFY(d.eliminarCondicionado(propio, alcance));
        QCOMPARE(contar("SELECT count(*) FROM condicionados"), 1.0);
        dlg().clear();
    }

    void cleanDividendsOfTheSubgroup() {
        sembrar();
        liquidar(db(), fecha, 1, 3, 4.0);
        const double llaves = contar("SELECT count(*) FROM ma_principal WHERE llave3 <> '0'");
        QVERIFY(llaves >= 3);
        dlg().yes();
        QVERIFY(ResultadoCarrera(env->ctx).limpiarDividendos(en(Alcance::subgrupo("ORIENTE"))));
        esperar("DIVIDENDOS", "SE HA LIMPIADO LA CARRERA  CON EXITO", Icon::Information);
        // ORIENTE's winners are sold tickets again, their keys kept; OCCIDENTE's stay settled.
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE carrera = 1 AND estatus = 1 AND grupo IN ('07','08')"), 0.0);
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE carrera = 1 AND estatus = 1 AND grupo = '12'"), 1.0);
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE llave3 <> '0'"), llaves);
        db().exec("UPDATE carreras SET dividendo = 0, win_ganadores = 0, win = 0");
    }

    void salesPerBooth() {
        sembrar();
        GerenciaGrupo g(env->ctx);
        const auto v = g.ventasPorTaquilla(en(Alcance::subgrupo("ORIENTE"), 1), 2, false);
        QCOMPARE(v.filas.size(), 1);
        QCOMPARE(v.filas[0].taquilla, QString("LOS PINOS"));
        QCOMPARE(v.filas[0].venta, 90.0);  // 9 units of 07 and 08
        QCOMPARE(v.filas[0].cobrado, 40.0);
        QCOMPARE(v.filas[0].porPagar, 30.0);
        const QStringList l = g.lineasTaquillas(v);
        QCOMPARE(l[l.size() - 2], QString("------------------"));
        QVERIFY(l.last().startsWith("Total:"));
        QCOMPARE(g.ventasPorTaquilla(en(Alcance::subgrupo("ORIENTE"), 1), 1, false).total.venta, 70.0);
        QCOMPARE(g.ventasPorTaquilla(en(Alcance::subgrupo("OCCIDENTE"), 1), 0, true).total.venta, 290.0);
    }

    void boothMessageRoundTrip() {
        GerenciaGrupo g(env->ctx);
        QVERIFY(g.guardarMensaje("CIERRE A LAS 6 PM"));
        esperar("Mensaje a las Taquillas", "Los cambios se han realizado con exito", Icon::Information);
        QCOMPARE(g.mensaje(), QString("CIERRE A LAS 6 PM"));
        QCOMPARE(textOf(db(), "SELECT mensajech FROM grupos WHERE grupo = '08'"), QString());
        QVERIFY(g.borrarMensaje());
        esperar("Mensaje a las Taquillas", "Mensaje Borrado", Icon::Information);
        QCOMPARE(g.mensaje(), QString());
        QVERIFY(!g.guardarMensaje(QString(300, 'X')));
        QCOMPARE(g.mensaje(), QString());
    }

    void switchesAndSupervisor() {
        db().exec("UPDATE grupos SET admincupo = 1, admindiv = 0, pedir_motivo = 1, nosumarret = 1, nu_administrador = '0414-1'"
                  " WHERE grupo = '07'");
        GerenciaGrupo g(env->ctx);
        const SwitchesGerencia w = g.switches();
        QVERIFY(w.admincupo);
        QVERIFY(!w.admindiv);
        QVERIFY(w.pedirMotivo);
        QVERIFY(w.noSumarRet);
        QCOMPARE(w.nuAdministrador, QString("0414-1"));
        QCOMPARE(w.subgrupo, QString("S1"));
        QCOMPARE(g.supervisoresTF(), (QStringList{"TODOS", "taquilla1"}));
        QVERIFY(!g.guardarSupervisorTF("taquilla3"));
        QVERIFY(g.guardarSupervisorTF("taquilla1"));
        QCOMPARE(g.supervisorTF(), QString("taquilla1"));
    }
};

QTEST_GUILESS_MAIN(TstGerencia)
#include "tst_gerencia.moc"
