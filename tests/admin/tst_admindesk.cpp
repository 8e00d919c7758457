// The administrator's desk besides processing: sales, race cells, limits,
// sale switches, the dividend rule, race-level refunds, lay-offs,
// conditioned amounts, single-ticket commands with their refusals, the audit
// and the ticket search.
#include "support/Boletos.h"
#include "admin/BoletosEscritorio.h"
#include "admin/CarreraEscritorio.h"
#include "admin/CentroEscritorio.h"
#include "admin/DescargasEscritorio.h"
#include "sales/JuegoTablaFija.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstAdminDesk : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QDate hoy;
    QString fecha;

    Db& db() { return env->db(); }
    ScriptedDialogs& dlg() { return env->dialogs; }
    // The desk's commands.
    OpcionesEscritorio opciones() { return OpcionesEscritorio(env->ctx); }
    VentasCarrera ventas() { return VentasCarrera(env->ctx); }
    TarjetaCarrera tarjeta() { return TarjetaCarrera(env->ctx); }
    ResultadoCarrera resultado() { return ResultadoCarrera(env->ctx); }
    CuposCentro cupos() { return CuposCentro(env->ctx); }
    ReglaCentro regla() { return ReglaCentro(env->ctx); }
    DescargasGrupo descargas() { return DescargasGrupo(env->ctx); }
    BoletosEscritorio boletos() { return BoletosEscritorio(env->ctx); }

    // The desk's selection: the working day's race on the first track.
    Seleccion admin(long long carrera, const QString& centro = "TODOS", const QString& grupo = "TODOS") {
        return seleccionDePrueba(env->ctx, carrera, centro, grupo);
    }

    void esperar(const QString& titulo, const QString& texto, Icon icono = Icon::Critical) {
        esperarCaja(dlg(), titulo, texto, icono);
    }

    double contar(const std::string& sql, const Params& p = {}) { return numberOf(db(), sql, p); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("admin_desk");
        env->loadDemo();
        env->signIn("admin");
        hoy = env->clock.today();
        fecha = fechaSql(hoy);
    }

    void init() { dlg().clear(); }
    void cleanup() { cerrarDialogos(dlg()); }

    void choices() {
        Seleccion a = admin(1);
        QCOMPARE(a.fecha, fecha);
        QCOMPARE(opciones().hipodromos(), (QStringList{"LA RINCONADA", "SANTA RITA"}));
        QCOMPARE(opciones().hipodromoPorDefecto(), QString("LA RINCONADA"));
        QCOMPARE(opciones().centros(), (QStringList{"TODOS", "LOS PINOS", "MARACAY"}));
        a.centro = "MARACAY";
        QCOMPARE(opciones().grupos(a.centro), (QStringList{"TODOS", "12", "15"}));
        a.grupo = "12";
        const Recordset t = opciones().taquillasDelGrupo(a);
        QCOMPARE(t.size(), 1);
        QCOMPARE(t.first().text("usuario"), QString("taquilla3"));
    }

    void salesPerHorseAndDay() {
        db().exec("DELETE FROM ma_principal");
        venderBoleto(db(), hoy, 1, 3, 2, "07", "LOS PINOS");
        venderBoleto(db(), hoy, 1, 3, 1500, "12", "MARACAY");
        venderBoleto(db(), hoy, 1, 5, 4, "07", "LOS PINOS", 2, 30);
        venderBoleto(db(), hoy, 2, 1, 7, "07", "LOS PINOS", 4, 70);
        Seleccion a = admin(1);
        const auto v = ventas().ventasPorCaballo(a);
        QCOMPARE(v.unidades, 1506.0);
        QCOMPARE(v.monto, 15060.0);
        QCOMPARE(ventas().lineasVentas(v),
                 (QStringList{"        CABALLO          VENTA", "              3          1,502",
                              "              5              4", "Venta en Gand:     1,506",
                              "Venta en Bsf:     Bs. 15.060,00"}));
        a.grupo = "07";
        QCOMPARE(ventas().ventasPorCaballo(a).unidades, 6.0);
        const auto d = ventas().ventasDelDia(a);
        QCOMPARE(d.unidades, 1513.0);
        QCOMPARE(d.cobrado, 30.0);
        QCOMPARE(d.cobradoYPorCobrar, 100.0);
    }

    void raceCells() {
        Seleccion a = admin(3);
        const Recordset rs = tarjeta().listaCarrera(a);
        QCOMPARE(rs.size(), 7);  // LA RINCONADA's race 3 only
        const long long id = rs[1].integer("id_carrera");
        QVERIFY(tarjeta().cambiarEstado(a, id, 2));
        QCOMPARE(contar("SELECT estado FROM carreras WHERE id_carrera = ?", {id}), 2.0);
        QVERIFY(!tarjeta().cambiarEstado(a, id, 7));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "EL ESTADO NO ES VALIDO");
        QVERIFY(tarjeta().cambiarApuestaMax(a, id, "2500,5"));
        QCOMPARE(contar("SELECT apuesta_max_win FROM carreras WHERE id_carrera = ?", {id}), 2500.5);
        QVERIFY(!tarjeta().cambiarApuestaMax(a, id, "mucho"));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "EL MONTO NO ES VALIDO");
        QCOMPARE(contar("SELECT apuesta_max_win FROM carreras WHERE id_carrera = ?", {id}), 2500.5);
        QCOMPARE(contar("SELECT count(*) FROM carreras WHERE estado <> 0"), 1.0);
    }

    void scratchCell() {
        db().exec("DELETE FROM ma_principal");
        db().exec("DELETE FROM descargas");
        db().exec("INSERT INTO carreras_remate (fecha, carrera, caballo, nu_caballo, mesa1, tabla1, ch) VALUES "
                  "(?, 3, 'X', 2, 'PEDRO', 300, 'LOS PINOS'), (?, 3, 'Y', 3, 'JUAN', 200, 'LOS PINOS')",
                  {fecha, fecha});
        const long long devuelto = venderBoleto(db(), hoy, 3, 2, 2, "07", "LOS PINOS", 4, 20);
        const long long pagado = venderBoleto(db(), hoy, 3, 2, 1, "07", "LOS PINOS", 3, 10);
        insertar(db(), Descarga{fecha, "10:00:00", "LOS PINOS", "07", 3, 2, 5, 40}.insercion());
        Seleccion a = admin(3);
        const long long id = Row::toInteger(db().scalar(
            "SELECT id_carrera FROM carreras WHERE fecha = ? AND carrera = 3 AND id_hipodromo = 1 AND nu_caballo = 2",
            {fecha}));
        QVERIFY(tarjeta().cambiarRetirado(a, id, true));
        QCOMPARE(contar("SELECT retirado FROM carreras WHERE id_carrera = ?", {id}), 1.0);
        const Row r = db().query("SELECT * FROM carreras_remate WHERE nu_caballo = 2").first();
        QCOMPARE(r.integer("retirado"), 1LL);
        QCOMPARE(r.text("mesa1"), QString("RET"));
        QCOMPARE(r.number("tabla1"), 0.0);
        QCOMPARE(contar("SELECT tabla1 FROM carreras_remate WHERE nu_caballo = 3"), 200.0);
        // Unscratching: the horse runs again, its unpaid refund is a sold ticket again, its lay-offs unpaid.
        QVERIFY(tarjeta().cambiarRetirado(a, id, false));
        QCOMPARE(contar("SELECT retirado FROM carreras WHERE id_carrera = ?", {id}), 0.0);
        QCOMPARE(contar("SELECT retirado FROM carreras_remate WHERE nu_caballo = 2"), 0.0);
        QCOMPARE(estado(db(), devuelto), (QPair<long long, double>(0, 0.0)));
        QCOMPARE(estado(db(), pagado), (QPair<long long, double>(3, 10.0)));
        QCOMPARE(contar("SELECT cobrado FROM descargas"), 0.0);
    }

    void centreLimits() {
        Seleccion a = admin(1);
        QVERIFY(!cupos().leer(a));
        QVERIFY(!cupos().guardarCupo(a, 3, "100"));
        esperar("Cupos de Venta", "EL VALOR NO ES VALIDO");
        a.centro = "MARACAY";
        QCOMPARE(cupos().leer(a)->number("cab16"), 300.0);
        QVERIFY(cupos().guardarCupo(a, 16, "120,5"));
        QCOMPARE(contar("SELECT cab16 FROM venta_cupo_ganadores WHERE ch = 'MARACAY'"), 120.5);
        QCOMPARE(contar("SELECT cab15 FROM venta_cupo_ganadores WHERE ch = 'MARACAY'"), 300.0);
        QVERIFY(!cupos().guardarCupo(a, 2, "-5"));
        QVERIFY(!cupos().guardarCupo(a, 17, "5"));
        QStringList todos;
        for (int i = 1; i <= 16; ++i) todos << QString::number(i * 10);
        todos[4] = "x";
        QVERIFY(!cupos().guardarCupos(a, todos));
        QCOMPARE(contar("SELECT cab1 FROM venta_cupo_ganadores WHERE ch = 'MARACAY'"), 300.0);
        todos[4] = "50";
        QVERIFY(cupos().guardarCupos(a, todos));
        esperar("Cupos de Venta", "Los cambios se han realizado con exito", Icon::Information);
        QCOMPARE(contar("SELECT cab1 + cab5 + cab16 FROM venta_cupo_ganadores WHERE ch = 'MARACAY'"), 220.0);
        QCOMPARE(contar("SELECT cab1 FROM venta_cupo_ganadores WHERE ch = 'LOS PINOS'"), 500.0);
    }

    void openCloseAndSwitches() {
        Seleccion a = admin(4);
        QVERIFY(tarjeta().guardarCarrera(a, true));
        QCOMPARE(dlg().count(), 1);  // not processed: nothing asked
        QCOMPARE(contar("SELECT min(venta) FROM carreras WHERE fecha = ? AND carrera = 4 AND id_hipodromo = 1", {fecha}),
                 1.0);
        QCOMPARE(contar("SELECT max(venta) FROM carreras WHERE fecha = ? AND carrera = 4 AND id_hipodromo = 2", {fecha}),
                 0.0);
        QVERIFY(tarjeta().guardarCarrera(a, false));
        db().exec("UPDATE carreras SET dividendo = 0.01 WHERE carrera = 4 AND id_hipodromo = 1");
        dlg().no();
        QVERIFY(!tarjeta().guardarCarrera(a, true));
        QCOMPARE(dlg().shown().last().kind, ScriptedDialogs::Kind::Confirm);
        esperar("VERIFIQUE EL PROCESO", "Esta apunto de abrir una carrera ya procesada");
        QCOMPARE(contar("SELECT max(venta) FROM carreras WHERE carrera = 4 AND id_hipodromo = 1"), 0.0);
        dlg().yes();
        QVERIFY(tarjeta().guardarCarrera(a, true));
        QCOMPARE(contar("SELECT min(venta) FROM carreras WHERE carrera = 4 AND id_hipodromo = 1"), 1.0);

        QVERIFY(tarjeta().guardarSwitches(a, {0, 1, 1, 0, 1}));
        esperar("Administración de Carreras", "Los cambios se han realizado con exito", Icon::Information);
        const auto s = tarjeta().switchesCarrera(a);
        QVERIFY(s);
        QCOMPARE(s->ganadores, 0);
        QCOMPARE(s->remate, 1);
        QCOMPARE(s->macuare, 1);
        QCOMPARE(s->tablaFija, 0);
        QCOMPARE(s->puestos, 1);
        QCOMPARE(contar("SELECT max(venta_rm) FROM carreras WHERE carrera = 4 AND id_hipodromo = 2"), 0.0);
    }

    void dividendRule() {
        Seleccion a = admin(1, "TODOS");
        QVERIFY(!regla().guardar(a, {}));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "DEBE SELECCIONAR UN CENTRO HIPICO");
        a.centro = "MARACAY";
        QMap<QString, QString> r = regla().leer(a);
        QCOMPARE(r.value("rango2"), QString("2.99"));
        QCOMPARE(r.value("valor_r2"), QString("0.5"));
        QCOMPARE(r.value("mododiv"), QString("1"));
        QCOMPARE(r.value("5cabvr3"), QString("0"));
        r["valor_r2"] = "1,25";
        r["5cabr5"] = "3";
        r["5cabvr3"] = "4.5";
        r["empate"] = "1";
        r["divopc"] = "1";
        QVERIFY(regla().guardar(a, r));
        QCOMPARE(contar("SELECT sum(valor_r2) FROM grupos WHERE ch = 'MARACAY'"), 2.5);
        QCOMPARE(contar("SELECT sum(divopc) FROM grupos WHERE ch = 'MARACAY'"), 2.0);
        QCOMPARE(contar("SELECT sum(valor_r2) FROM grupos WHERE ch = 'LOS PINOS'"), 2.0);
        QCOMPARE(contar("SELECT `5cabvr3` FROM dividendos_ampliados WHERE ch = 'MARACAY' AND id_hipodromo = 1"), 4.5);
        QCOMPARE(regla().leer(a).value("5cabr5"), QString("3"));

        // Every field is checked first: nothing is written on a bad one.
        QMap<QString, QString> mala = r;
        mala["valor_r1"] = "9";
        mala["4cabop1"] = "1.5";
        QVERIFY(!regla().guardar(a, mala));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "EL CAMPO 4CABOP1 NO ES VALIDO");
        mala["4cabop1"] = "1";
        mala["rango3"] = "tres";
        QVERIFY(!regla().guardar(a, mala));
        mala["rango3"] = "3";
        mala["empate"] = "2";
        mala["empatemin"] = "0";
        QVERIFY(!regla().guardar(a, mala));
        esperar("VERIFICAR SELECCION", "DEBE SELECCIONAR UNA OPCION CORRECTA EN EL MINIMO");
        QCOMPARE(contar("SELECT max(valor_r1) FROM grupos WHERE ch = 'MARACAY'"), 3.0);

        // With the per-track option the rule is the centre's for the track.
        env->ctx.session.modoventa = 1;
        a.hipodromo = "SANTA RITA";
        QMap<QString, QString> pista = regla().leer(a);
        QCOMPARE(pista.value("valor_r2"), QString("1"));
        pista["valor_r2"] = "7";
        QVERIFY(regla().guardar(a, pista));
        QCOMPARE(contar("SELECT valor_r2 FROM dividendos WHERE ch = 'MARACAY' AND id_hipodromo = 2"), 7.0);
        QCOMPARE(contar("SELECT valor_r2 FROM dividendos WHERE ch = 'MARACAY' AND id_hipodromo = 1"), 1.0);
        QCOMPARE(contar("SELECT sum(valor_r2) FROM grupos WHERE ch = 'MARACAY'"), 2.5);
        a.hipodromo = "";
        QVERIFY(!regla().guardar(a, pista));
        esperar("Dato Necesario", "Debe seleccionar un hipodromo");
        env->ctx.session.modoventa = 0;
    }

    void raceRefunds() {
        db().exec("DELETE FROM ma_principal");
        const long long a07 = venderBoleto(db(), hoy, 5, 1, 2, "07", "LOS PINOS");
        const long long b07 = venderBoleto(db(), hoy, 5, 2, 3, "07", "LOS PINOS");
        const long long a12 = venderBoleto(db(), hoy, 5, 1, 4, "12", "MARACAY");
        const long long pagado = venderBoleto(db(), hoy, 5, 1, 1, "12", "MARACAY", 2, 9);
        Seleccion a = admin(5, "TODOS", "07");

        // Scratch horse 1 for group 07 only.
        QVERIFY(!resultado().retirarCaballo(a, "x"));
        esperar("VERIFIQUE E INTENTE DE NUEVO", "EL NUMERO DE CABALLO NO ES VALIDO");
        dlg().no();
        QVERIFY(!resultado().retirarCaballo(a, "1"));
        QCOMPARE(dlg().last().text, QString("Desea retirar el caballo"));
        QCOMPARE(estado(db(), a07).first, 0LL);
        dlg().yes();
        QVERIFY(resultado().retirarCaballo(a, "1"));
        QCOMPARE(estado(db(), a07), (QPair<long long, double>(4, 20.0)));
        QCOMPARE(estado(db(), b07).first, 0LL);
        QCOMPARE(estado(db(), a12).first, 0LL);

        // Four-runner refund: only for a group whose rule returns four-runner races.
        a.grupo = "TODOS";
        QVERIFY(!resultado().devolverCuatroCaballos(a));
        esperar("Anulacion de Carrera", "DEBE SELECCIONAR UN GRUPO");
        a.grupo = "12";
        dlg().yes();
        QVERIFY(!resultado().devolverCuatroCaballos(a));
        esperar("Anulacion de Carrera", "EL GRUPO NO DEVUELVE LAS JUGADAS CON 4 CABALLOS");
        db().exec("UPDATE grupos SET `4cabvr2` = -1 WHERE grupo = '12'");
        dlg().yes();
        QVERIFY(resultado().devolverCuatroCaballos(a));
        QCOMPARE(estado(db(), a12), (QPair<long long, double>(4, 40.0)));
        QCOMPARE(estado(db(), b07).first, 0LL);

        // Void the race for every group.
        a.grupo = "TODOS";
        dlg().no();
        QVERIFY(!resultado().anular(a));
        QCOMPARE(estado(db(), b07).first, 0LL);
        dlg().yes();
        QVERIFY(resultado().anular(a));
        esperar("Anulacion de Carrera", "Los cambios se han realizado con exito", Icon::Information);
        QCOMPARE(estado(db(), b07), (QPair<long long, double>(4, 30.0)));
        QCOMPARE(estado(db(), pagado), (QPair<long long, double>(2, 9.0)));

        // Clean: back to sold, but refunds and paid tickets stay.
        db().exec("UPDATE ma_principal SET estatus = 1, cobrado = 5, llave6 = 'k' WHERE numero = ?", {b07});
        dlg().yes();
        QVERIFY(resultado().limpiar(a));
        esperar("Administración de Carreras", "SE HA LIMPIADO LA CARRERA  CON EXITO", Icon::Information);
        const Row r = filaBoleto(db(), b07);
        QCOMPARE(r.integer("estatus"), 0LL);
        QCOMPARE(r.text("llave6"), QString("0"));
        QCOMPARE(estado(db(), a07).first, 4LL);
    }

    void layOffs_data() {
        QTest::addColumn<QString>("grupo");
        QTest::addColumn<int>("carrera");
        QTest::addColumn<QString>("caballo");
        QTest::addColumn<QString>("monto");
        QTest::addColumn<QString>("texto");
        QTest::newRow("no group") << "TODOS" << 1 << "2" << "5" << "DEBE SELECCIONAR UN GRUPO";
        QTest::newRow("amount first") << "07" << 1 << "99" << "cinco" << "EL MONTO DE LA JUGADA NO ES VALIDO";
        QTest::newRow("zero amount") << "07" << 1 << "2" << "0" << "EL MONTO DE LA JUGADA NO ES VALIDO";
        QTest::newRow("above cab_max") << "07" << 2 << "15" << "5" << "EL NUMERO DE CABALLO NO ES VALIDO";
        QTest::newRow("closed race, before horse") << "07" << 2 << "12" << "5" << "LA CARRERA SE ENCUENTRA CERRADA";
        QTest::newRow("no such horse") << "07" << 1 << "12" << "5" << "EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA";
        QTest::newRow("scratched") << "07" << 1 << "8" << "5" << "EL CABALLO ESTA RETIRADO";
    }

    void layOffs() {
        QFETCH(QString, grupo);
        QFETCH(int, carrera);
        QFETCH(QString, caballo);
        QFETCH(QString, monto);
        QFETCH(QString, texto);
        db().exec("UPDATE carreras SET retirado = 1 WHERE carrera = 1 AND id_hipodromo = 1 AND nu_caballo = 8");
        db().exec("DELETE FROM descargas");
        Seleccion a = admin(carrera, "TODOS", grupo);
        QVERIFY(!descargas().registrarDescarga(a, caballo, monto));
        esperar("VERIFIQUE E INTENTE DE NUEVO", texto);
        QCOMPARE(contar("SELECT count(*) FROM descargas"), 0.0);
        db().exec("UPDATE carreras SET retirado = 0 WHERE carrera = 1 AND id_hipodromo = 1 AND nu_caballo = 8");
    }

    void layOffRegisteredAndListed() {
        db().exec("DELETE FROM descargas");
        Seleccion a = admin(1, "LOS PINOS", "08");
        QVERIFY(descargas().registrarDescarga(a, "3", "12,5"));
        esperar("Descargas", "Jugada registrada con exito", Icon::Information);
        const Row r = db().query("SELECT * FROM descargas").first();
        QCOMPARE(r.text("fecha"), fecha);
        QCOMPARE(r.text("hora"), QString("10:30:00"));
        QCOMPARE(r.text("ch"), QString("LOS PINOS"));
        QCOMPARE(r.integer("caballo"), 3LL);
        QCOMPARE(r.number("ganadores"), 12.5);
        insertar(db(), Descarga{fecha, "11:00:00", "LOS PINOS", "08", 2, 1, 4, 20}.insercion());
        insertar(db(), Descarga{fecha, "11:00:00", "LOS PINOS", "07", 2, 1, 9, 0}.insercion());
        const auto d = descargas().descargas(a);
        QCOMPARE(d.filas.size(), 2);
        QCOMPARE(d.sumaganadores, 16.5);
        QCOMPARE(d.sumacobrado, 20.0);
    }

    void conditionedAmounts() {
        db().exec("DELETE FROM condicionados");
        Seleccion a = admin(2, "LOS PINOS", "TODOS");
        QVERIFY(!descargas().registrarCondicionado(a, "3", "5"));
        esperar("Registro de Condicionados", "DEBE SELECCIONAR UN GRUPO");
        a.grupo = "07";
        QVERIFY(!descargas().registrarCondicionado(a, "3", "-5"));
        esperar("Registro de Condicionados", "EL MONTO NO ES VALIDO");
        QVERIFY(!descargas().registrarCondicionado(a, "40", "5"));
        esperar("Registro de Condicionados", "EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA");
        QCOMPARE(contar("SELECT count(*) FROM condicionados"), 0.0);
        QVERIFY(descargas().registrarCondicionado(a, "3", "6,5"));
        esperar("Registro de Condicionados", "Los cambios se han realizado con exito", Icon::Information);
        QVERIFY(descargas().registrarCondicionado(a, "4", "8"));
        const Recordset rs = descargas().condicionados(a);
        QCOMPARE(rs.size(), 2);
        QCOMPARE(rs[0].integer("caballo"), 4LL);  // newest first
        QCOMPARE(rs[1].number("montocond"), 6.5);
        QCOMPARE(rs[1].text("subgrupo"), QString("S1"));
        QVERIFY(descargas().eliminarCondicionado(rs[0].integer("id_condicionado")));
        esperar("Eliminacion de Registros", "EL registro fue eliminado con exito", Icon::Information);
        QCOMPARE(descargas().condicionados(a).size(), 1);
    }

    void voidByNumber() {
        db().exec("DELETE FROM ma_principal");
        db().exec("DELETE FROM bitacora");
        db().exec("UPDATE carreras SET win_ganadores = 0, dividendo = 0 WHERE carrera IN (6, 7)");
        const long long n = venderBoleto(db(), hoy, 6, 2, 3, "07", "LOS PINOS");
        Seleccion a = admin(6);
        // Cancelling or an empty reason does nothing.
        dlg().cancel();
        QVERIFY(!boletos().anularPorNumero(n));
        dlg().type("  ");
        QVERIFY(!boletos().anularPorNumero(n));
        QCOMPARE(dlg().count(), 2);
        QCOMPARE(dlg().shown().first().text, QString("INGRESE EL MOTIVO"));
        dlg().type("ANULADO");
        QVERIFY(!boletos().anularPorNumero(n + 1000));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO");

        // A processed race needs the administrator's code.
        db().exec("UPDATE carreras SET win_ganadores = 2 WHERE carrera = 6");
        dlg().type("CLIENTE DESISTIO");
        QVERIFY(!boletos().anularPorNumero(n));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
        // The void by code's own code is no key here.
        dlg().type("KTR384");
        QVERIFY(!boletos().anularPorNumero(n));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
        // A reason longer than the log keeps is refused before anything is written.
        dlg().type(QString(256, 'X'));
        QVERIFY(!boletos().anularPorNumero(n));
        esperar("Verificación del Sistema", "EL MOTIVO ES DEMASIADO LARGO: MAXIMO 255 CARACTERES");
        QCOMPARE(contar("SELECT count(*) FROM ma_principal"), 1.0);
        QCOMPARE(contar("SELECT count(*) FROM bitacora"), 0.0);
        dlg().type("QWPLR850264");
        QVERIFY(boletos().anularPorNumero(n));
        esperar("Administración del Sistema", "BOLETO ANULADO CON EXITO", Icon::Information);
        const Row log = db().query("SELECT * FROM bitacora").first();
        QCOMPARE(log.integer("numero"), n);
        QCOMPARE(log.integer("estatus"), 5LL);
        QCOMPARE(log.text("motivo"), QString("ELIMINADO POR EL ADMIN"));
        QCOMPARE(log.text("usuario"), QString("admin"));
        QCOMPARE(contar("SELECT count(*) FROM ma_principal"), 0.0);

        // An open race: the reason is recorded; a paid ticket is never voided.
        const long long m = venderBoleto(db(), hoy, 7, 2, 3, "07", "LOS PINOS");
        const long long p = venderBoleto(db(), hoy, 7, 2, 3, "07", "LOS PINOS", 3, 30);
        a.carrera = 7;
        dlg().type("o'brien'; drop table bitacora; --");
        QVERIFY(boletos().anularPorNumero(m));
        QCOMPARE(textOf(db(), "SELECT motivo FROM bitacora WHERE numero = ?", {m}),
                 QString("o'brien'; drop table bitacora; --"));
        // A code typed where it opens nothing is still never written into the log.
        const long long k = venderBoleto(db(), hoy, 7, 2, 3, "07", "LOS PINOS");
        dlg().type("KTR384");
        QVERIFY(boletos().anularPorNumero(k));
        QCOMPARE(textOf(db(), "SELECT motivo FROM bitacora WHERE numero = ?", {k}), QString("ELIMINADO POR EL ADMIN"));
        dlg().type("QWPLR850264");
        QVERIFY(!boletos().anularPorNumero(p));
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR");
        QCOMPARE(contar("SELECT count(*) FROM ma_principal WHERE numero = ?", {p}), 1.0);
    }

    void voidByCode() {
        db().exec("DELETE FROM ma_principal");
        db().exec("DELETE FROM bitacora");
        db().exec("UPDATE carreras SET win_ganadores = 0 WHERE carrera = 6");
        const long long n = venderBoleto(db(), hoy, 6, 4, 2.5, "12", "MARACAY");
        const QString codigo = textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE numero = ?", {n});
        Seleccion a = admin(6);
        dlg().type(codigo).type("");
        QVERIFY(!boletos().anularPorCodigo());
        esperar("Verificación del Sistema", "No se puede realizar la operación sin un motivo");
        dlg().clear();
        dlg().type("99999").type("ANULADO");
        QVERIFY(!boletos().anularPorCodigo());
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO");
        dlg().clear();
        dlg().type(codigo).type("ANULADO").no();
        QVERIFY(!boletos().anularPorCodigo());
        QCOMPARE(dlg().shown()[2].title, QString("CODIGO DEL BOLETO"));
        QCOMPARE(dlg().shown()[2].text, QString("BOLETO PERTENECE AL HIPICO : MARACAY\nPOR UN MONTO DE  2.5  GANADORES\n"
                                                "AL CABALLO: 4\nEN LA CARRERA N#: 6"));
        esperar("Administración del Sistema", "EL BOLETO NO SE ANULO", Icon::Information);
        QCOMPARE(contar("SELECT count(*) FROM ma_principal"), 1.0);

        db().exec("UPDATE carreras SET win_ganadores = 4 WHERE carrera = 6");
        dlg().clear();
        dlg().type(codigo).type("ANULADO").yes();
        QVERIFY(!boletos().anularPorCodigo());
        esperar("Administración del Sistema", "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA");
        dlg().clear();
        dlg().type(codigo).type("KTR384").yes();
        QVERIFY(boletos().anularPorCodigo());
        QCOMPARE(textOf(db(), "SELECT motivo FROM bitacora WHERE numero = ?", {n}), QString("ELIMINADO POR EL ADMIN"));
        QCOMPARE(contar("SELECT count(*) FROM ma_principal"), 0.0);
        db().exec("UPDATE carreras SET win_ganadores = 0 WHERE carrera = 6");
    }

    void payRefundRenumber() {
        db().exec("DELETE FROM ma_principal");
        db().exec("DELETE FROM bitacora");
        const QDate ayer = hoy.addDays(-1);
        const long long ganador = venderBoleto(db(), ayer, 6, 4, 2, "07", "LOS PINOS", 1, 24);
        const long long retirado = venderBoleto(db(), hoy, 6, 5, 2, "07", "LOS PINOS", 4, 20);
        const long long perdedor = venderBoleto(db(), hoy, 6, 6, 2, "07", "LOS PINOS");
        Seleccion a = admin(6);

        QVERIFY(!boletos().pagar(0));
        esperar("ADMINISTRACION DEL SISTEMA", "VERIFIQUE EL NUMERO DEL BOLETO");
        dlg().type("COBRADO");
        QVERIFY(!boletos().pagar(perdedor));
        esperar("ADMINISTRACION DEL SISTEMA", "BOLETO NO GANADOR");
        dlg().cancel();
        QVERIFY(!boletos().pagar(ganador));
        QCOMPARE(dlg().last().title, QString("MOTIVO DEL CAMBIO"));
        dlg().type("COBRADO EN OFICINA");
        QVERIFY(boletos().pagar(ganador));
        esperar("ADMINISTRACION DEL SISTEMA", "BOLETO COBRADO CON EXITO", Icon::Information);
        const Row g = filaBoleto(db(), ganador);
        QCOMPARE(g.integer("estatus"), 2LL);
        QCOMPARE(g.text("fecha_cobro"), fechaSql(ayer));  // the sale date
        QCOMPARE(textOf(db(), "SELECT motivo FROM bitacora WHERE numero = ? AND estatus = 2", {ganador}),
                 QString("COBRADO EN OFICINA"));
        dlg().type("COBRADO");
        QVERIFY(!boletos().pagar(ganador));
        esperar("ADMINISTRACION DEL SISTEMA", "BOLETO YA PAGADO");
        dlg().type("COBRADO");
        QVERIFY(boletos().pagar(retirado));
        QCOMPARE(estado(db(), retirado), (QPair<long long, double>(3, 20.0)));

        // Refund: units times the unit price; never a paid ticket.
        dlg().type("DEVUELTO");
        QVERIFY(boletos().devolver(perdedor));
        esperar("ADMINISTRACION DEL SISTEMA", "BOLETO MODIFICADO CON EXITO", Icon::Information);
        QCOMPARE(estado(db(), perdedor), (QPair<long long, double>(4, 20.0)));
        dlg().type("DEVUELTO");
        QVERIFY(!boletos().devolver(ganador));
        esperar("ADMINISTRACION DEL SISTEMA", "BOLETO YA PAGADO");
        QCOMPARE(contar("SELECT count(*) FROM bitacora"), 3.0);

        // Renumber.
        const QString otro = textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE numero = ?", {retirado});
        dlg().type(otro);
        QVERIFY(!boletos().renumerar(perdedor));
        esperar("ADMINISTRACION DEL SISTEMA", "EL CODIGO YA PERTENECE A OTRO BOLETO");
        dlg().type("07 11'23");
        QVERIFY(!boletos().renumerar(perdedor));
        esperar("ADMINISTRACION DEL SISTEMA", "DEBE INGRESAR UN CODIGO VALIDO");
        QVERIFY(!boletos().renumerar(999999));
        esperar("ADMINISTRACION DEL SISTEMA", "VERIFIQUE EL NUMERO DEL BOLETO");
        dlg().type("0711239999");
        QVERIFY(boletos().renumerar(perdedor));
        QCOMPARE(textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE numero = ?", {perdedor}), QString("0711239999"));
    }

    void voidCombinationTicket() {
        db().exec("DELETE FROM macuares");
        db().exec("INSERT INTO macuares (boleto, fecha, monto, estatus) VALUES ('51123100', ?, 10, 0), "
                  "('51123101', ?, 10, 2)",
                  {fecha, fecha});
        // The day's Macuare: its first leg open for sale.
        db().exec("INSERT IGNORE INTO macuare_dias (fecha) VALUES (?)", {fecha});
        db().exec("UPDATE carreras SET venta_mc = 1 WHERE fecha = ? AND carrera = 1", {fecha});
        db().exec("UPDATE configuracion SET venta_macuare = 1");
        Seleccion a = admin(1);
        dlg().type("51123101");
        QVERIFY(!boletos().anularMacuare());
        esperar("ANULACION DE MACUARES", "EL BOLETO NO SE PUEDE ANULAR");
        QCOMPARE(dlg().shown().first().text, QString("INGRESE EL CODIGO DEL BOLETO DEL MACUARE"));
        dlg().type("59999");
        QVERIFY(!boletos().anularMacuare());
        esperar("ANULACION DE MACUARES", "EL BOLETO NO SE PUEDE ANULAR");
        db().exec("UPDATE configuracion SET venta_macuare = 0");
        dlg().type("51123100");
        QVERIFY(!boletos().anularMacuare());
        esperar("ANULACION DE MACUARES", "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS");
        db().exec("UPDATE configuracion SET venta_macuare = 1");
        dlg().type("51123100");
        QVERIFY(boletos().anularMacuare());
        QCOMPARE(contar("SELECT count(*) FROM macuares"), 1.0);
    }

    // The audit on each game's tickets: its own snapshot rows, what a ticket
    // bought kept, altered tickets found and reset, the other game's snapshot untouched.
    void audit_data() {
        QTest::addColumn<bool>("tablaFija");
        QTest::newRow("winners") << false;
        QTest::newRow("fixed table") << true;
    }
    void audit() {
        QFETCH(bool, tablaFija);
        const Juego& juego = tablaFija ? juegoTablaFija() : juegoGanadores();
        const Juego& otro = tablaFija ? juegoGanadores() : juegoTablaFija();
        for (const char* t : {"ma_principal", "tablafija", "ventas_auditoria"})
            db().exec(std::string("DELETE FROM ") + t);
        const auto vender = [&](long long caballo, double n, const QString& grupo, const QString& ch, int estatus = 0,
                                double cobrado = 0) {
            return tablaFija ? venderTablas(db(), hoy, 3, caballo, n, n * 10, grupo, ch, estatus, cobrado)
                             : venderBoleto(db(), hoy, 3, caballo, n, grupo, ch, estatus, cobrado);
        };
        const long long a1 = vender(2, 2, "07", "LOS PINOS", 1, 12);
        vender(4, 1, "12", "MARACAY");
        const long long pagado = vender(5, 1, "12", "MARACAY", 2, 8);
        Seleccion a = admin(3);
        // The other game's snapshot of the same race.
        if (tablaFija)
            venderBoleto(db(), hoy, 3, 1, 1, "07", "LOS PINOS");
        else
            venderTablas(db(), hoy, 3, 1, 1, 10, "07", "LOS PINOS");
        QVERIFY(BoletosEscritorio(env->ctx, otro).auditoria(a));
        BoletosEscritorio b(env->ctx, juego);
        auto r = b.auditoria(a);
        QVERIFY(r);
        QVERIFY(r->tomada);
        QCOMPARE(r->enAuditoria, 3LL);
        QCOMPARE(r->alterados.size(), 0);
        esperar("Auditoria del Sistema", "AUDITORIA DE LA CARRERA GUARDADA: 3 BOLETOS", Icon::Information);
        const Row foto = db().query(QString("SELECT * FROM ventas_auditoria WHERE nu_boleto = "
                                            "(SELECT nu_boleto FROM %1 WHERE numero = ?)")
                                        .arg(juego.tabla)
                                        .toStdString(),
                                    {a1})
                             .first();
        QCOMPARE(foto.number("monto"), tablaFija ? 20.0 : 2.0);
        QCOMPARE(foto.number("tablas"), tablaFija ? 2.0 : 0.0);
        QCOMPARE(foto.text("taquilla"), QString("LOS PINOS"));
        QCOMPARE(foto.integer("id_juego"), tablaFija ? 2LL : 1LL);

        r = b.auditoria(a);
        QVERIFY(!r->tomada);
        esperar("Auditoria del Sistema", "NO SE ENCONTRARON BOLETOS ALTERADOS", Icon::Information);

        // Someone moves two tickets onto other horses.
        const std::string tabla = juego.tabla;
        db().exec("UPDATE " + tabla + " SET caballo = 9 WHERE numero IN (?, ?)", {a1, pagado});
        r = b.auditoria(a);
        QCOMPARE(r->alterados.size(), 2);
        esperar("Auditoria del Sistema", "Boletos Alterados Encontrados", Icon::Warning);
        const auto estadoDe = [&](long long n) {
            return textOf(db(), "SELECT concat(estatus, ':', cobrado) FROM " + tabla + " WHERE numero = ?", {n});
        };
        QCOMPARE(estadoDe(a1), QString("0:0"));
        QCOMPARE(estadoDe(pagado), QString("2:8"));  // money already paid stays recorded

        dlg().yes();
        QVERIFY(b.borrarAuditoria(a));
        QCOMPARE(contar("SELECT count(*) FROM ventas_auditoria"), 1.0);  // the other game's row
    }

    void ticketSearch_data() {
        QTest::addColumn<QString>("clase");
        QTest::addColumn<QString>("centro");
        QTest::addColumn<QString>("caballo");
        QTest::addColumn<int>("filas");
        QTest::addColumn<double>("cobrado");
        QTest::addColumn<double>("porcobrar");
        QTest::newRow("all") << "TODAS" << "TODOS" << "" << 6 << 38.0 << 34.0;
        QTest::newRow("paid") << "PAGADOS" << "TODOS" << "" << 1 << 30.0 << 0.0;
        QTest::newRow("to pay") << "POR PAGAR" << "TODOS" << "" << 1 << 0.0 << 24.0;
        QTest::newRow("refunds to pay") << "RET. POR PAGAR" << "TODOS" << "" << 1 << 0.0 << 10.0;
        QTest::newRow("refunds paid") << "RET. PAGADOS" << "TODOS" << "" << 1 << 8.0 << 0.0;
        QTest::newRow("not winners") << "NO GANADORES" << "TODOS" << "" << 2 << 0.0 << 0.0;
        QTest::newRow("one centre") << "TODAS" << "MARACAY" << "" << 2 << 8.0 << 0.0;
        QTest::newRow("one horse") << "TODAS" << "TODOS" << "4" << 3 << 30.0 << 24.0;
    }

    void ticketSearch() {
        QFETCH(QString, clase);
        QFETCH(QString, centro);
        QFETCH(QString, caballo);
        QFETCH(int, filas);
        QFETCH(double, cobrado);
        QFETCH(double, porcobrar);
        db().exec("DELETE FROM ma_principal");
        venderBoleto(db(), hoy, 8, 4, 2, "07", "LOS PINOS", 2, 30);
        venderBoleto(db(), hoy, 8, 4, 2, "07", "LOS PINOS", 1, 24);
        venderBoleto(db(), hoy, 8, 5, 1, "08", "LOS PINOS", 4, 10);
        venderBoleto(db(), hoy, 8, 6, 1, "12", "MARACAY", 3, 8);
        venderBoleto(db(), hoy, 8, 4, 1, "12", "MARACAY");
        venderBoleto(db(), hoy, 8, 7, 1, "08", "LOS PINOS");
        venderBoleto(db(), hoy, 7, 4, 1, "08", "LOS PINOS");
        Seleccion a = admin(8, centro);
        const auto b = boletos().buscar(a, clase, caballo, false);
        QVERIFY(b);
        QCOMPARE(b->filas.size(), filas);
        QCOMPARE(b->sumacobrado, cobrado);
        QCOMPARE(b->sumaporcobrar, porcobrar);
        QVERIFY(b->filas[0].integer("numero") > b->filas[filas - 1].integer("numero") || filas == 1);
        QCOMPARE(b->filas.columnNames(), (QStringList{"numero", "nu_boleto", "hora", "carrera", "caballo", "ganadores",
                                                      "cobrado", "estatus", "ch", "grupo"}));
    }

    // The same search on each game's tickets: winner units at the unit
    // price, fixed tables with their own money; the classes, the sums, the
    // kept copy and the printed list.
    void searchPerGame_data() {
        QTest::addColumn<bool>("tablaFija");
        QTest::addColumn<QString>("clase");
        QTest::addColumn<bool>("historico");
        QTest::addColumn<int>("filas");
        QTest::addColumn<QList<double>>("sumas");  // units, cobrado, por cobrar
        for (const bool tf : {false, true}) {
            const char* juego = tf ? "fixed table" : "winners";
            const auto fila = [&](const char* nombre) -> QTestData& {
                return QTest::addRow("%s %s", juego, nombre) << tf;
            };
            fila("all") << "TODAS" << false << 6 << QList<double>{8, 38, 34};
            fila("paid") << "PAGADOS" << false << 1 << QList<double>{2, 30, 0};
            fila("to pay") << "POR PAGAR" << false << 1 << QList<double>{2, 0, 24};
            fila("refunds to pay") << "RET. POR PAGAR" << false << 1 << QList<double>{1, 0, 10};
            fila("refunds paid") << "RET. PAGADOS" << false << 1 << QList<double>{1, 8, 0};
            fila("not winners") << "NO GANADORES" << false << 2 << QList<double>{2, 0, 0};
            fila("kept copy") << "TODAS" << true << 2 << QList<double>{4, 30, 24};
        }
    }
    void searchPerGame() {
        QFETCH(bool, tablaFija);
        QFETCH(QString, clase);
        QFETCH(bool, historico);
        QFETCH(int, filas);
        QFETCH(QList<double>, sumas);
        const Juego& juego = tablaFija ? juegoTablaFija() : juegoGanadores();
        for (const char* t : {juego.tabla, juego.copia}) db().exec(std::string("DELETE FROM ") + t);
        // One seeded day of either game: a table costs 10.
        const auto vender = [&](long long carrera, long long caballo, double n, const QString& grupo, const QString& ch,
                                int estatus = 0, double cobrado = 0) {
            return tablaFija ? venderTablas(db(), hoy, carrera, caballo, n, n * 10, grupo, ch, estatus, cobrado)
                             : venderBoleto(db(), hoy, carrera, caballo, n, grupo, ch, estatus, cobrado);
        };
        const QString pagado = vender(8, 4, 2, "07", "LOS PINOS", 2, 30).codigo;
        const QString debido = vender(8, 4, 2, "07", "LOS PINOS", 1, 24).codigo;
        vender(8, 5, 1, "08", "LOS PINOS", 4, 10);
        vender(8, 6, 1, "12", "MARACAY", 3, 8);
        vender(8, 4, 1, "12", "MARACAY");
        vender(8, 7, 1, "08", "LOS PINOS");
        vender(7, 4, 1, "08", "LOS PINOS");  // another race
        for (const QString& c : {pagado, debido}) copiarAlGrupo(db(), juego, c);

        BoletosEscritorio e(env->ctx, juego);
        const auto b = e.buscar(admin(8), clase, "", historico);
        QVERIFY(b);
        QCOMPARE(int(b->filas.size()), filas);
        QCOMPARE((QList<double>{b->sumaganadores, b->sumacobrado, b->sumaporcobrar}), sumas);
        const double precio = tablaFija ? 10 : numberOf(db(), "SELECT valor_ganador FROM configuracion");
        QCOMPARE(b->sumamonto, sumas[0] * precio);
        QVERIFY(b->filas.columnNames().contains(tablaFija ? "tablas" : "ganadores"));

        // Printed: the local ticket list keeps each ticket's units and money.
        env->resetLocal();
        QVERIFY(e.reporteBusqueda(admin(8), clase, "", historico));
        QCOMPARE(numberOf(env->local(), "SELECT count(*) FROM rpt_jugadas"), double(filas));
        QCOMPARE(numberOf(env->local(), tablaFija ? "SELECT sum(tablas) FROM rpt_jugadas"
                                                  : "SELECT sum(ganadores) FROM rpt_jugadas"),
                 sumas[0]);
        QCOMPARE(numberOf(env->local(), "SELECT sum(monto) FROM rpt_jugadas"), sumas[0] * precio);
        QCOMPARE(numberOf(env->local(), "SELECT sum(cobradoreal) FROM rpt_jugadas"), sumas[1]);
        QCOMPARE(numberOf(env->local(), "SELECT sum(porcobrar) FROM rpt_jugadas"), sumas[2]);
        db().exec(std::string("DELETE FROM ") + juego.copia);
    }

    void ticketSearchFindsNothing() {
        Seleccion a = admin(8, "TODOS");
        QVERIFY(!boletos().buscar(a, "TODAS", "13", false));
        esperar(" Busqueda ", "No se encontro Ningun registro", Icon::Information);
        QVERIFY(!boletos().buscar(a, "TODAS", "", true));  // nothing kept in the group copy
        QVERIFY(!boletos().buscar(a, "TODAS", "x", false));
        esperar(" Busqueda ", "EL NUMERO DE CABALLO NO ES VALIDO");
    }
};

QTEST_GUILESS_MAIN(TstAdminDesk)
#include "tst_admindesk.moc"
