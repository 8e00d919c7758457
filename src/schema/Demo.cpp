#include "schema/Demo.h"

#include "core/Cipher.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Version.h"
#include "schema/Escritores.h"

#include <QStringList>
#include <QTime>

namespace hipico {

namespace {

const char* const kCaballos[] = {
    "RELAMPAGO",     "TORMENTA",      "GRAN CAPITAN", "LUNA LLENA",   "EL PROFETA",    "SOL NACIENTE",
    "DON PANCHO",    "BRISA MARINA",  "CENTELLA",     "REY DEL SUR",  "PRINCESA ANA",  "ANACONDA",
    "TRUENO AZUL",   "VIENTO NORTE",  "CAMPEON",      "LA GITANA",    "CARIBE",        "ESTRELLA",
    "MAGO MERLIN",   "FURIA ROJA",    "NIÑO MIMADO",  "CORSARIO",     "DAMA DE ORO",   "PEGASO",
    "ÁGUILA REAL",   "MONTAÑERO",     "TITAN",        "PALOMA",       "FLECHA",        "JAGUAR",
    "BUCANERO",      "SIRENA",        "CENTAURO",     "DIAMANTE",     "LLANERO",       "FORTUNA",
};
constexpr int kNumCaballos = sizeof(kCaballos) / sizeof(kCaballos[0]);

// Horses per race: track 1 then track 2, races 1 to 8.
constexpr int kCorredores[2][8] = {{8, 10, 7, 12, 9, 11, 6, 6}, {9, 7, 12, 8, 10, 6, 11, 7}};

// Clients beyond the first two (whose accounts hold only their first
// deposit): a week of plays, prizes, deposits and a withdrawal, and clients
// of another booth and another centre.
void cargarDemoClientes(Db& db, const QDate& hoy) {
    db.exec("INSERT INTO clientes (id_cliente, cliente, ch, observacion, tipo_cliente, usuario, clave, estatus, "
            "fecha_ingreso, id_usuario, cupo) VALUES "
            "(3, 'JOSÉ \"EL FLACO\" PÉREZ', 'LOS PINOS', 'JUEGA LOS SÁBADOS', 1, 'flaco', '', 'Activo', ?, 11, 1000), "
            "(4, 'AGROPECUARIA LA CEIBA', 'LOS PINOS', 'CLIENTE DE LA TAQUILLA DOS', 2, 'ceiba', '', 'Activo', ?, 12, 5000), "
            "(5, 'LUISA MÁRQUEZ', 'MARACAY', 'CLIENTE DE MARACAY', 1, 'lmarquez', '', 'Activo', ?, 13, 1000)",
            {fechaSql(hoy.addDays(-30)), fechaSql(hoy.addDays(-20)), fechaSql(hoy.addDays(-10))});
    struct Movimiento {
        int cliente, dias, tipo, banco, usuario;
        double monto;
        const char *operacion, *numero, *hora, *observacion;
    };
    const Movimiento movimientos[] = {
        {3, 7, 1, 2, 11, 800, "Positivo", "552310", "09:00:00", "SALDO INICIAL"},
        {3, 6, 2, 1, 11, -200, "Ganadores", "07111701", "14:10:00", "CARRERA 3 CABALLO 5"},
        {3, 5, 3, 1, 11, 640, "Positivo", "", "17:30:00", "PREMIO CARRERA 3"},
        {3, 3, 2, 1, 11, -150, "Tabla Fija", "21112002", "15:00:00", "TABLA FIJA CARRERA 6"},
        {3, 1, 4, 3, 11, -500, "Positivo", "10022", "10:15:00", "RETIRO POR TRANSFERENCIA"},
        {4, 8, 1, 3, 12, 3000, "Positivo", "99821", "10:00:00", "SALDO INICIAL"},
        {4, 4, 2, 1, 12, -2500, "Ganadores", "08111901", "13:45:00", "CARRERA 2 CABALLO 1"},
        {4, 2, 1, 4, 12, 5000, "Positivo", "774120", "09:30:00", "DEPOSITO MERCANTIL"},
        {5, 5, 1, 1, 13, 700, "Positivo", "", "10:00:00", "SALDO INICIAL"},
        {5, 0, 2, 1, 13, -120, "Ganadores", "12112301", "12:20:00", "CARRERA 1 CABALLO 4"},
    };
    for (const Movimiento& m : movimientos)
        db.exec("INSERT INTO jugadas_clientes (id_cliente, monto, monto_tipo, tipo_operacion, id_usuario, id_banco, "
                "nu_operacion, fecha, hora, observacion) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                {m.cliente, m.monto, m.operacion, m.tipo, m.usuario, m.banco, m.numero, fechaSql(hoy.addDays(-m.dias)),
                 m.hora, m.observacion});
}

// A demo user, in its group's centre, with its password enciphered. The
// first users carry their numbers (the demo's client movements name them);
// 0 takes the next one.
void insertarUsuario(Db& db, const DemoUsuario& u, int id = 0) {
    db.exec("INSERT INTO usuarios (id_usuario, usuario, clave, nombre, nivel, grupo, ch, estatus, fecha_ingreso) "
            "SELECT ?, ?, ?, ?, ?, ?, COALESCE((SELECT ch FROM grupos WHERE grupo = ? LIMIT 1), ''), 'Activo', ''",
            {id, u.usuario, Encriptar(u.clave, kClaveMaestra), u.nombre, u.nivel, u.grupo, u.grupo});
}

}  // namespace

const QVector<DemoUsuario>& usuariosDemo() {
    static const QVector<DemoUsuario> usuarios = {
        {"admin", "admin123", "ADMINISTRADOR GENERAL", "Administrador", "07"},
        {"oculto", "oculto123", "SOPORTE TECNICO", "Administrador Oculto", "07"},
        {"socio", "socio123", "SOCIO ORIENTE", "Socio", "07"},
        {"gerente", "gerente123", "GERENTE LOS PINOS", "Gerente", "07"},
        {"supervisor", "super123", "SUPERVISOR DE SALA", "Supervisor", "07"},
        {"suptf", "suptf123", "SUPERVISOR TABLA FIJA", "SupervisorTF", "08"},
        {"admintf", "admintf123", "ADMINISTRADOR TABLA FIJA", "AdminTF", "08"},
        {"remate", "remate123", "REMATADOR", "Remate", "08"},
        {"tablafija", "tf123", "TAQUILLA TABLA FIJA", "TablaFija", "08"},
        {"total", "total123", "TAQUILLA TOTAL", "Total", "08"},
        {"taquilla1", "taq123", "TAQUILLA UNO LOS PINOS", "Taquilla", "07"},
        {"taquilla2", "taq123", "TAQUILLA DOS LOS PINOS", "Taquilla2", "08"},
        {"taquilla3", "taq123", "TAQUILLA MARACAY", "Taquilla", "12"},
        {"taquilla4", "taq123", "TAQUILLA MARACAY NORTE", "Taquilla", "15"},
    };
    return usuarios;
}

void cargarDemo(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);

    db.inTransaction([&] {
        db.exec("INSERT INTO configuracion (id, fecha, carrera, id_hipodromo, version, web, empresa, rif, mora, "
                "mensaje, centrarform, modoventa, funtdolar, permitir_tf, permitir_mc, valor_ganador, "
                "valortablafija, apuesta_max_win, cupo_tf, venta_ganadores, venta_remate, venta_macuare, venta_tf, "
                "dias, rpt_taquillaconfirmar, ventas4) "
                "VALUES (1, ?, 1, 1, ?, ?, ?, ?, '', ?, 1, 0, 0, 1, 1, 10, 5, 5000, 100, 1, 1, 0, 0, 3, 0, 0)",
                {fecha, double(kVersionNumero), "https://descargas.hipico.example/hipico", "RED DE CENTROS HIPICOS",
                 "J-30123456-7", "Bienvenidos. Recuerde cerrar su taquilla al final del día."});

        // New and changed passwords as Argon2id hashes; five failures hold an account for 15 minutes.
        db.exec("UPDATE configuracion SET clave_segura = 1, intentos_clave = 5, minutos_bloqueo = 15");

        db.exec("INSERT INTO hipodromos (id_hipodromo, hipodromo, estatus) VALUES "
                "(1, 'LA RINCONADA', 1), (2, 'SANTA RITA', 1), (3, 'VALENCIA', 0)");

        db.exec("INSERT INTO subgrupos (subgrupo, nombre) VALUES ('S1', 'ORIENTE'), ('S2', 'OCCIDENTE')");

        struct Grupo {
            const char* grupo;
            const char* ch;
            const char* subgrupo;
            const char* contacto;
            int inicialboleto;
        };
        const Grupo grupos[] = {
            {"07", "LOS PINOS", "S1", "PEDRO PEREZ", 1},
            {"08", "LOS PINOS", "S1", "MARIA RODRIGUEZ", 1},
            {"12", "MARACAY", "S2", "JOSE GONZALEZ", 0},
            {"15", "MARACAY", "S2", "ANA MARTINEZ", 1},
        };
        for (const Grupo& g : grupos) {
            const bool oriente = QString(g.subgrupo) == "S1";
            db.exec("INSERT INTO grupos (grupo, ch, subgrupo, contacto, telefono, fecha_ingreso, name_empresa, "
                    "rif_empresa, direccion_empresa, tlf_empresa, ganadores, tablafija, macuare, subastas, por_ch, "
                    "por_casa, por_admin, bloqueo, ticket_cobro, anular_boleto_win, clientes, duracionboletos, "
                    "VerBoletosTaq, mascara, min_bs, min_dol, cab_max, carrera, id_hipodromo, valor_ganador, "
                    "apuesta_max_win, cupo_winxjugador, cupovip, inicialboleto, clave_win, pedirclave, admin_cupo, "
                    "opcioncupowin, empresa, rif, impresion_datos, venta_ganadores, por_remate, por_rematador, "
                    "tablazo, tablaz1, tablaz2, minimo_remate, divopc, mododiv, "
                    "rango1, rango2, valor_r1, opciondiv1, rango3, rango4, valor_r2, opciondiv2, "
                    "rango9, valor_r5, rango10, topefavorito, `4cabr1`, `4cabr2`, `4cabvr1`, `4cabop1`) "
                    "VALUES (?, ?, ?, ?, '0212-5550000', ?, ?, 'J-40000000-1', 'AV. PRINCIPAL', '0212-5550001', "
                    "1, 1, 1, 2, 40, 40, 20, 1, 1, 1, 1, 3, 1, 0, 10, 1, 14, 0, 0, 10, 5000, 2000, 4000, ?, "
                    "'1234', 1, 1, 0, ?, 'J-40000000-1', 1, 1, 20, 5, 50, 10, 10, 500, 0, ?, "
                    "0.01, 2.99, 3, 0, 3, 9.99, ?, 1, 10, 2, 60, 30, 0.01, 2.99, 2.5, 0)",
                    {g.grupo, g.ch, g.subgrupo, g.contacto, fecha, QString("AGENCIA ") + g.grupo, g.inicialboleto,
                     QString("AGENCIA ") + g.grupo, oriente ? 0 : 1, oriente ? 1.0 : 0.5});
        }

        // Every manager's switch of 07 ("gerente" opens both managers' windows) and of 12.
        db.exec("UPDATE grupos SET admincupo = 1, admindiv = 1, gerente_eliminar = 1, visualboletosgerente = 1, "
                "pedir_motivo = 1, nu_administrador = '0414-5550101', nu_tecnico = '0412-5550202', "
                "mensajech = 'BIENVENIDOS' WHERE grupo IN ('07', '12')");
        // Every group sells the fixed table, with its line on the ticket.
        db.exec("UPDATE grupos SET venta_tf = 1, mensajetf = 'GRACIAS POR SU JUGADA'");

        db.exec("INSERT INTO venta_cupo_ganadores (ch, cab1, cab2, cab3, cab4, cab5, cab6, cab7, cab8, cab9, cab10, "
                "cab11, cab12, cab13, cab14, cab15, cab16) VALUES "
                "('LOS PINOS', 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 500), "
                "('MARACAY', 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300, 300)");
        db.exec("INSERT INTO venta_cupo_tf (ch, cab1, cab2, cab3, cab4, cab5, cab6, cab7, cab8, cab9, cab10, cab11, "
                "cab12, cab13, cab14) VALUES "
                "('LOS PINOS', 50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50), "
                "('MARACAY', 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30)");

        for (const char* ch : {"LOS PINOS", "MARACAY"})
            for (int hipodromo : {1, 2})
                db.exec("INSERT INTO dividendos (ch, id_hipodromo, cupo, rango1, rango2, valor_r1, opciondiv1, "
                        "rango3, rango4, valor_r2, opciondiv2, rango9, valor_r5, rango10, topefavorito) "
                        "VALUES (?, ?, 500, 0.01, 2.99, 3, 0, 3, 9.99, 1, 1, 10, 2, 60, 30)",
                        {ch, hipodromo});

        for (int i = 0; i < usuariosDemo().size(); ++i) insertarUsuario(db, usuariosDemo().at(i), i + 1);

        int nombre = 0;
        for (int pista = 0; pista < 2; ++pista) {
            for (int carrera = 1; carrera <= 8; ++carrera) {
                const int corredores = kCorredores[pista][carrera - 1];
                for (int n = 1; n <= corredores; ++n) {
                    // Race 8 of the first track keeps exactly four runners: two are scratched.
                    const int retirado = (pista == 0 && carrera == 8 && n >= 5) ? 1 : 0;
                    const int favorito = n == 1 + (carrera % corredores) ? 1 : 0;
                    const int abierta = carrera == 1 ? 1 : 0;
                    db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, retirado, "
                            "retirado_tf, favorito, valor_tf, venta, venta_tf, venta_rm, venta_mc, estado_puestos, "
                            "apuesta_max_win, apuesta_max_tf) "
                            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, 5, ?, ?, ?, 0, ?, 5000, 100)",
                            {fecha, carrera, pista + 1, kCaballos[nombre % kNumCaballos], n, retirado, retirado,
                             favorito, abierta, abierta, abierta, abierta});
                    ++nombre;
                }
            }
        }
        for (int i = 0; i < kNumCaballos; ++i)
            db.exec("INSERT INTO caballos (nombre) VALUES (?)", {kCaballos[i]});

        db.exec("INSERT INTO tipo_clientes (id_tipo_cliente, tipo) VALUES (1, 'NORMAL'), (2, 'VIP')");
        db.exec("INSERT INTO tipo_deposito (id_tipo_deposito, tipo) VALUES (1, 'DEPOSITO'), (2, 'JUGADA'), "
                "(3, 'PREMIO'), (4, 'RETIRO')");
        db.exec("INSERT INTO bancos (id_banco, banco) VALUES (1, 'EFECTIVO'), (2, 'BANCO DE VENEZUELA'), "
                "(3, 'BANESCO'), (4, 'MERCANTIL')");
        // The demo's clients carry their numbers: their movements name them
        // (a cluster's own numbers would step by its size).
        db.exec("INSERT INTO clientes (id_cliente, cliente, ch, observacion, tipo_cliente, usuario, clave, estatus, "
                "fecha_ingreso, id_usuario, cupo) VALUES "
                "(1, 'CARLOS LÓPEZ', 'LOS PINOS', 'CLIENTE FRECUENTE', 1, 'clopez', '', 'Activo', ?, 11, 2000), "
                "(2, 'INVERSIONES EL TRÉBOL', 'LOS PINOS', 'CLIENTE VIP', 2, 'trebol', '', 'Activo', ?, 11, 10000)",
                {fecha, fecha});
        db.exec("INSERT INTO jugadas_clientes (id_cliente, monto, monto_tipo, tipo_operacion, id_usuario, id_banco, "
                "nu_operacion, fecha, hora, observacion) VALUES "
                "(1, 1500, 'DEPOSITO', 1, 11, 1, '', ?, '09:00:00', 'SALDO INICIAL'), "
                "(2, 20000, 'DEPOSITO', 1, 11, 2, '884512', ?, '09:05:00', 'SALDO INICIAL')",
                {fecha, fecha});
        cargarDemoClientes(db, hoy);

        for (const char* g : {"07", "08", "12", "15"}) {
            db.exec("INSERT INTO ventas_ganadores_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
            db.exec("INSERT INTO ventas_tf_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
            db.exec("INSERT INTO ventas_mc_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
        }
    });
}

void cargarDemoSemana(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);
    db.inTransaction([&] {
        // The week before: the daily totals the reports read (winner and fixed-table).
        for (const char* tabla : {"ventas_ganadores_general", "ventas_tf_general"})
            db.exec(std::string("INSERT INTO ") + tabla +
                        " (grupo, fecha, venta, premios, monto_porpagar, saldo) SELECT grupo, fecha, venta, premios, "
                        "porpagar, venta - premios - porpagar FROM (SELECT grupo, fecha, venta, ROUND(venta * f) AS premios, "
                        "ROUND(venta * 0.05) AS porpagar FROM (SELECT g.grupo, DATE_FORMAT(? - INTERVAL s.seq DAY, "
                        "'%Y-%m-%d') AS fecha, (800 + 37 * s.seq + 13 * g.id_grupo) * ? AS venta, 0.45 + "
                        "MOD(s.seq * g.id_grupo, 5) / 20 AS f FROM grupos g, seq_1_to_7 s) a) b",
                    {fecha, QString::fromLatin1(tabla) == QLatin1String("ventas_tf_general") ? 0.4 : 1.0});
    });
}

void cargarDemoMacuare(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);
    db.inTransaction([&] {
        db.exec("INSERT INTO macuare_dias (fecha, id_hipodromo, carrera1, porcentaje_casa) VALUES (?, 1, 1, 20)",
                {fecha});
        db.exec("UPDATE configuracion SET venta_macuare = 1");
        db.exec("UPDATE carreras SET venta_mc = 1 WHERE fecha = ? AND id_hipodromo = 1 AND carrera BETWEEN 1 AND 7",
                {fecha});
        db.exec("UPDATE grupos SET veces_mc = 10, apuesta_max_mc = 1000, cupo_mc = 2000");
        const char* const nombres[] = {"JOSÉ PÉREZ", "MARÍA D'ALESSANDRO", "LUIS GARCÍA", "ANA MUÑOZ", "PEDRO ROJAS"};
        struct Taquilla {
            const char* grupo;
            const char* ch;
            const char* subgrupo;
        };
        const Taquilla taquillas[] = {{"07", "LOS PINOS", "S1"}, {"08", "LOS PINOS", "S1"}, {"12", "MARACAY", "S2"}};
        for (int t = 0; t < 40; ++t) {
            const Taquilla& q = taquillas[t % 3];
            BoletoMacuare b;
            b.fecha = fecha;
            b.hora = QTime(9, 0).addSecs(t * 97).toString("hh:mm:ss");
            b.monto = 10.0 * (1 + t % 4);
            b.veces = 1 + t % 3;
            QStringList picks;
            for (int i = 0; i < 7; ++i) {
                b.v[i] = 1 + (t * (i + 3) + i) % 6;
                picks << QString::number(b.v[i]);
            }
            b.nombre = nombres[t % 5];
            b.grupo = q.grupo;
            b.subgrupo = q.subgrupo;
            b.taquilla = q.ch;
            b.combinacion = picks.join('-');
            const long long numero = insertar(db, b.insercion());
            db.exec("UPDATE macuares SET boleto = CONCAT('5', DATE_FORMAT(fecha, '%m%d'), numero) WHERE numero = ?",
                    {numero});
            const double costo = b.monto * double(b.veces);
            if (db.exec("UPDATE combinaciones_general SET estatus = 1, monto = monto + ? WHERE combinacion = ? AND "
                        "fecha = ?",
                        {costo, b.combinacion, fecha}) == 0)
                insertar(db, combinacionNueva(b.combinacion, fecha, costo));
        }
        // The first two legs are run.
        db.exec("INSERT INTO caballos_ganadores (fecha, c1_1, c2_1) VALUES (?, 4, 6)", {fecha});
    });
}

const QVector<DemoUsuario>& usuariosDemoSubastas() {
    static const QVector<DemoUsuario> usuarios = {
        {"gerente08", "gerente123", "GERENTE SUBASTA LOS PINOS", "Gerente", "08"},
        {"remate800", "remate123", "REMATADOR EL PARAISO", "Remate", "21"},
        {"remate3t", "remate123", "REMATADOR LA GUAIRA", "Remate", "31"},
        {"remate4t", "remate123", "REMATADOR VALENCIA NORTE", "Remate", "41"},
        {"remate5t", "remate123", "REMATADOR BARQUISIMETO", "Remate", "51"},
        {"remateint", "remate123", "REMATADOR MIAMI", "Remate", "61"},
    };
    return usuarios;
}

void cargarDemoSubastas(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);
    struct Tablero {
        const char* grupo;
        const char* ch;
        int subastas, rematetam, tablas;
    };
    const Tablero tableros[] = {{"08", "LOS PINOS", 2, 0, 4},  {"21", "EL PARAISO", 2, 1, 4},
                                {"31", "LA GUAIRA", 3, 0, 5},  {"41", "VALENCIA NORTE", 4, 0, 4},
                                {"51", "BARQUISIMETO", 5, 0, 5}, {"61", "MIAMI", 10, 0, 4}};
    const char* const compradores[] = {"12", "7", "casa", "21", "999", "5", "33", "18"};
    db.inTransaction([&] {
        for (const Tablero& t : tableros) {
            if (QString(t.grupo) != "08")
                db.exec("INSERT INTO grupos (grupo, ch, subgrupo, contacto, fecha_ingreso, name_empresa, ganadores, "
                        "subastas, rematetam, por_remate, por_rematador, tablazo, tablaz1, tablaz2, tablaz3, tablaz4, "
                        "minimo_remate, doblaje, redondear, clave_win) "
                        "VALUES (?, ?, 'S1', 'SUBASTAS', ?, ?, 0, ?, ?, 20, 5, 50, 10, 10, 5, 5, 500, 100, 1, '1234')",
                        {t.grupo, t.ch, fecha, QString("AGENCIA ") + t.grupo, t.subastas, t.rematetam});
            // Race 1 of LA RINCONADA on the centre's board, bought line by line.
            const Recordset caballos = db.query(
                "SELECT caballo, nu_caballo, retirado FROM carreras WHERE fecha = ? AND carrera = 1 AND "
                "id_hipodromo = 1 ORDER BY id_carrera",
                {fecha});
            std::vector<Insercion> filas;
            for (const Row& c : caballos)
                filas.push_back(FilaRemate{fecha, 1, c.text("caballo"), c.integer("nu_caballo"),
                                           static_cast<int>(c.integer("retirado")), t.ch, 20}
                                    .insercion());
            insertarFilas(db, filas);
            for (int n = 1; n <= 6; ++n)
                for (int mesa = 1; mesa <= t.tablas; ++mesa)
                    db.exec(QString("UPDATE carreras_remate SET tabla%1 = ?, mesa%1 = ? WHERE fecha = ? AND carrera = 1 "
                                    "AND ch = ? AND nu_caballo = ?")
                                .arg(mesa)
                                .toStdString(),
                            {double(600 - 80 * n + 20 * mesa), compradores[(n + mesa) % 8], fecha, t.ch, n});
            db.exec("UPDATE carreras_remate SET pote = 100, pote2 = 50 WHERE fecha = ? AND carrera = 1 AND ch = ?",
                    {fecha, t.ch});
        }
        for (const DemoUsuario& u : usuariosDemoSubastas()) insertarUsuario(db, u);
    });
}

void cargarDemoTablaFija(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);
    db.inTransaction([&] {
        db.exec("UPDATE carreras SET valor_tf = 5 + MOD(nu_caballo, 4) * 2.5 WHERE fecha = ? AND id_hipodromo = 1",
                {fecha});
        const double premio = Row::toNumber(db.scalar("SELECT valortablafija FROM configuracion"));
        // race, horse, tables; race 2 is settled on horse 3.
        const int ventas[][3] = {{1, 1, 2}, {1, 3, 4}, {1, 3, 1}, {1, 6, 3}, {2, 3, 2}, {2, 3, 5}, {2, 1, 1}, {2, 4, 2}};
        int i = 0;
        for (const auto& v : ventas) {
            const double valor = 5 + (v[1] % 4) * 2.5;
            const bool ganador = v[0] == 2 && v[1] == 3;
            BoletoTablaFija b;
            b.carrera = v[0];
            b.caballo = v[1];
            b.tablas = v[2];
            b.monto = v[2] * valor;
            b.ch = QStringLiteral("LOS PINOS");
            b.grupo = QStringLiteral("08");
            b.hora = QStringLiteral("10:%1:00").arg(10 + 5 * i++);
            b.fecha = fecha;
            b.estatus = ganador ? (i == 5 ? 2 : 1) : 0;
            b.cobrado = ganador ? v[2] * premio : 0;
            if (b.estatus == 2) b.fechaCobro = fecha;
            const long long numero = insertar(db, b.insercion());
            db.exec("UPDATE tablafija SET nu_boleto = ? WHERE numero = ?",
                    {QStringLiteral("2") + hoy.toString("MMdd") + QString::number(numero), numero});
        }
        db.exec("UPDATE carreras SET estado_tf = 1, venta_tf = 0 WHERE fecha = ? AND carrera = 2 AND id_hipodromo = 1",
                {fecha});
        db.exec("UPDATE ventas_tf_general SET premios = ?, saldo = -? WHERE fecha = ? AND grupo = '08'",
                {2 * premio, 2 * premio, fecha});
    });
}

void cargarDemoHipicos(Db& db, const QDate& hoy) {
    const QString fecha = fechaSql(hoy);
    db.exec("INSERT INTO centroshipicos (ch, contacto, telefono, grupo, fecha_ingreso, subastas, ganadores, "
            "tablafija, macuare, subgrupo, estatus) VALUES "
            "('LOS PINOS', 'PEDRO PEREZ', '0212-5550000', '07', ?, 2, 1, 1, 1, 'S1', 'Activo'), "
            "('LOS PINOS', 'MARIA RODRIGUEZ', '0212-5550000', '08', ?, 2, 1, 1, 1, 'S1', 'Activo'), "
            "('MARACAY', 'JOSE GONZALEZ', '0243-5550000', '12', ?, 2, 1, 1, 1, 'S2', 'Activo'), "
            "('MARACAY', 'ANA MARTINEZ', '0243-5550000', '15', ?, 2, 1, 1, 1, 'S2', 'Activo')",
            {fecha, fecha, fecha, fecha});

    // Tomorrow's card, ready to be copied by the race-card screen: three races
    // of LA RINCONADA and two of SANTA RITA, six horses each, one scratched.
    const QString manana = fechaSql(hoy.addDays(1));
    int nombre = 7;
    for (int hipodromo : {1, 2}) {
        for (int carrera = 1; carrera <= (hipodromo == 1 ? 3 : 2); ++carrera) {
            for (int n = 1; n <= 6; ++n) {
                db.exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, retirado, favorito) "
                        "VALUES (?, ?, ?, ?, ?, ?, ?)",
                        {manana, carrera, hipodromo, kCaballos[nombre % kNumCaballos], n,
                         (hipodromo == 1 && carrera == 2 && n == 6) ? 1 : 0, n == carrera ? 1 : 0});
                ++nombre;
            }
        }
    }
}

}  // namespace hipico
