#include "schema/Demo.h"

#include "core/Cipher.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Version.h"

#include <QStringList>

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

        for (const DemoUsuario& u : usuariosDemo()) {
            const QString ch = (u.grupo == "12" || u.grupo == "15") ? "MARACAY" : "LOS PINOS";
            db.exec("INSERT INTO usuarios (usuario, clave, nombre, nivel, grupo, ch, estatus, fecha_ingreso) "
                    "VALUES (?, ?, ?, ?, ?, ?, 'Activo', '')",
                    {u.usuario, Encriptar(u.clave, kClaveMaestra), u.nombre, u.nivel, u.grupo, ch});
        }

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
        db.exec("INSERT INTO clientes (cliente, ch, observacion, tipo_cliente, usuario, clave, estatus, "
                "fecha_ingreso, id_usuario, cupo) VALUES "
                "('CARLOS LÓPEZ', 'LOS PINOS', 'CLIENTE FRECUENTE', 1, 'clopez', '', 'Activo', ?, 11, 2000), "
                "('INVERSIONES EL TRÉBOL', 'LOS PINOS', 'CLIENTE VIP', 2, 'trebol', '', 'Activo', ?, 11, 10000)",
                {fecha, fecha});
        db.exec("INSERT INTO jugadas_clientes (id_cliente, monto, monto_tipo, tipo_operacion, id_usuario, id_banco, "
                "nu_operacion, fecha, hora, observacion) VALUES "
                "(1, 1500, 'DEPOSITO', 1, 11, 1, '', ?, '09:00:00', 'SALDO INICIAL'), "
                "(2, 20000, 'DEPOSITO', 1, 11, 2, '884512', ?, '09:05:00', 'SALDO INICIAL')",
                {fecha, fecha});

        for (const char* g : {"07", "08", "12", "15"}) {
            db.exec("INSERT INTO ventas_ganadores_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
            db.exec("INSERT INTO ventas_tf_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
            db.exec("INSERT INTO ventas_mc_general (grupo, fecha) VALUES (?, ?)", {g, fecha});
        }
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
