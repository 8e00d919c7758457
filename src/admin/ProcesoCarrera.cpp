#include "admin/ProcesoCarrera.h"

#include "core/Db.h"
#include "core/Diario.h"
#include "sales/TicketKeys.h"

#include <QHash>

namespace hipico {

bool esTodos(const QString& centro) {
    const QString c = centro.trimmed();
    return c.isEmpty() || c == QLatin1String("TODOS") || c == QLatin1String("Todos") || c == QLatin1String("todos");
}

long long devolverBoletos(Db& db, const QString& fecha, long long carrera, const QString& grupo, long long caballo,
                          double valorGanador) {
    // Paid tickets (2, 3) and refunds already due (4) keep their state.
    std::string sql =
        "update ma_principal set estatus=4,cobrado=ganadores* ? Where  carrera = ? and fecha  = ?";
    Params params{valorGanador, carrera, fecha};
    if (!esTodos(grupo)) {
        sql += " and grupo  = ?";
        params.push_back(grupo);
    }
    if (caballo != 0) {
        sql += " and caballo  = ?";
        params.push_back(caballo);
    }
    sql += " and (estatus<>3 and estatus <>4) and estatus <> 2";
    // The refund and its journal rows in one transaction (or the caller's).
    return db.inTransaction([&] {
        const long long devueltos = db.exec(sql, params);
        anotarPremios(db, fecha, carrera, esTodos(grupo) ? QString() : grupo);
        return devueltos;
    });
}

namespace {

struct Configuracion {
    int ventas4 = 0;
    double montoCondicionado = 0;
    double valorGanador = 0;
};

}  // namespace

ResultadoProceso procesarCarrera(Db& db, const PeticionProceso& p) {
    return db.inTransaction([&] {
        ResultadoProceso res;
        const long long ganador = p.ganadores.value(0).caballo;
        const double dividendo = p.ganadores.value(0).dividendo;
        const GanadorOficial segundo = p.ganadores.value(1);

        // Two processings of one race wait for each other.
        db.query("SELECT id_carrera FROM carreras where carrera = ? and fecha = ? and id_hipodromo = ? FOR UPDATE",
                 {p.carrera, p.fecha, p.idHipodromo});

        // Every centre's unsettled tickets and lay-offs of the race start again.
        // Only what a processing changed is reset: a sold ticket (0) already
        // holds nothing due, and the status index reaches the race's winners
        // without reading every ticket of the race.
        db.exec("update ma_principal set estatus=0,cobrado=0,llave3=0,llave4=0  where carrera= ? and fecha= ? and "
                "(estatus <> 4 and estatus <>3) and estatus <> 2 and estatus <> 0",
                {p.carrera, p.fecha});
        db.exec("update descargas set cobrado=0 Where carrera = ? and fecha = ?", {p.carrera, p.fecha});
        db.exec("update carreras set dividendo= ?,win_ganadores= ?,win = ? where  carrera = ? and fecha  = ? and "
                "id_hipodromo  = ?  ",
                {dividendo, ganador, ganador, p.carrera, p.fecha, p.idHipodromo});
        db.exec("update carreras set dividendo2= ?,win_ganadores2= ? where  carrera = ? and fecha  = ? and "
                "id_hipodromo  = ?  ",
                {segundo.dividendo, segundo.caballo, p.carrera, p.fecha, p.idHipodromo});

        Configuracion conf;
        {
            const Recordset c = db.query("SELECT ventas4,monto_condicionado,valor_ganador FROM configuracion");
            if (!c.empty()) {
                conf.ventas4 = c.first().toInt("ventas4");
                conf.montoCondicionado = c.first().number("monto_condicionado");
                conf.valorGanador = c.first().number("valor_ganador");
            }
        }

        res.corredores = static_cast<int>(Row::toInteger(
            db.scalar("SELECT count(carrera) as cant_cabs FROM carreras where carrera= ? and retirado=0 and fecha= ? "
                      "and id_hipodromo  = ?;",
                      {p.carrera, p.fecha, p.idHipodromo})));
        const int corredores = res.corredores == 4 && conf.ventas4 == 1 ? 8 : res.corredores;

        QVector<bool> favorito;
        for (const GanadorOficial& g : p.ganadores) {
            const Recordset f = db.query("SELECT retirado,favorito FROM carreras where carrera= ?  and fecha= ? and "
                                         "nu_caballo= ? and id_hipodromo  = ?;",
                                         {p.carrera, p.fecha, g.caballo, p.idHipodromo});
            favorito << (!f.empty() && f.first().integer("favorito") == 1);
        }

        const Recordset grupos = esTodos(p.centro)
                                     ? db.query("SELECT * FROM grupos order by id_grupo")
                                     : db.query("SELECT * FROM grupos where ch= ? order by id_grupo", {p.centro});

        QHash<QString, Row> ampliadas;  // per centre
        for (const Row& g : grupos) {
            const QString ch = g.text("ch");
            const QString grupo = g.text("grupo");
            ReglaDividendo regla;
            if (p.porHipodromo) {
                const Recordset d = db.query("select * from dividendos where ch= ? and id_hipodromo= ?",
                                             {ch, p.idHipodromo});
                regla = ReglaDividendo::desde(d.empty() ? Row() : d.first(), g.toInt("divopc"), g.toInt("mododiv"));
            } else {
                regla = ReglaDividendo::desde(g, g.toInt("divopc"), g.toInt("mododiv"));
            }
            if (!ampliadas.contains(ch)) {
                const Recordset a = db.query("select * from dividendos_ampliados where ch= ? and id_hipodromo= ?",
                                             {ch, p.idHipodromo});
                ampliadas.insert(ch, a.empty() ? Row() : a.first());
            }
            regla.ampliar(ampliadas.value(ch));

            for (int i = 0; i < p.ganadores.size(); ++i) {
                const GanadorOficial& w = p.ganadores[i];
                DatosDividendo datos;
                datos.oficial = w.dividendo;
                datos.corredores = corredores;
                datos.favorito = favorito.value(i);
                datos.empate = p.ganadores.size() > 1;
                datos.pagarOficial = p.pagarOficial;
                datos.montoCondicionado = conf.montoCondicionado;
                const Recordset cond = db.query("SELECT *  FROM condicionados  where carrera = ? and caballo= ? and "
                                                "fecha  = ?  and grupo  = ?",
                                                {p.carrera, w.caballo, p.fecha, grupo});
                // The newest amount entered for the winner is the one that holds.
                long long ultimo = -1;
                for (const Row& c : cond)
                    if (c.integer("id_condicionado") > ultimo) {
                        ultimo = c.integer("id_condicionado");
                        datos.condicionadoGrupo = c.number("montocond");
                    }

                const DividendoGrupo x = calcularDividendo(regla, datos);
                LiquidacionGrupo l{grupo, ch, w.caballo, x.tipo, x.x, 0};
                if (x.tipo == DividendoGrupo::Tipo::Devolver) {
                    // The group returns every open ticket of the race: nothing more to settle.
                    l.boletos = db.exec("update ma_principal set estatus=4,cobrado=(ganadores* ?) where grupo= ? AND "
                                        "carrera= ? and (estatus<>3 and estatus <>4) and estatus <> 2 and fecha  = ?",
                                        {conf.valorGanador, grupo, p.carrera, p.fecha});
                    l.dividendo = conf.valorGanador;
                    res.grupos << l;
                    break;
                }
                if (x.tipo == DividendoGrupo::Tipo::Pagar) {
                    db.exec("update descargas set cobrado=(ganadores * ?) where caballo= ? and carrera = ? and "
                            "fecha  = ?  and grupo= ?",
                            {x.x, w.caballo, p.carrera, p.fecha, grupo});
                    l.boletos = db.exec(
                        "update ma_principal set cobrado=(ganadores * ?),estatus=1,llave3= ?,llave6= ? where "
                        "caballo= ? and carrera = ? and fecha  = ? and (estatus <> 4 and estatus<>3) and "
                        "estatus <> 2 and grupo= ?",
                        {x.x, llave3Premio(x.x), llave6Liquidacion(grupo, p.carrera, w.caballo, x.x), w.caballo,
                         p.carrera, p.fecha, grupo});
                    if (x.porCondicionado) res.condicionadosConsumidos = true;
                }
                res.grupos << l;
            }
        }

        if (res.condicionadosConsumidos) {
            // Conditioned amounts are consumed by one processing, in every centre.
            db.exec("update grupos set condicionado=0");
            if (p.porHipodromo) db.exec("update dividendos set condicionado=0");
        }
        anotarPremios(db, p.fecha, p.carrera);
        return res;
    });
}

}  // namespace hipico
