#include "schema/LocalSchema.h"

#include "core/Config.h"
#include "core/Connections.h"
#include "core/Db.h"
#include "core/Version.h"

#include <QRegularExpression>

namespace hipico {

namespace {

const char* const kRptDiario =
    "CREATE TABLE `rpt_diario` ("
    "`id_rpt` double NOT NULL AUTO_INCREMENT,"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`venta` double NOT NULL DEFAULT '0',"
    "`fecha` date NOT NULL DEFAULT '0000-00-00',"
    "`chipico` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_inicio` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_final` varchar(45) NOT NULL DEFAULT '',"
    "`saldo` double NOT NULL DEFAULT '0',"
    "`premios` double NOT NULL DEFAULT '0',"
    "`monto_porpagar` double NOT NULL DEFAULT '0',"
    "`por_ch` double NOT NULL DEFAULT '0',"
    "`por_casa` double NOT NULL DEFAULT '0',"
    "`por_admin` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id_rpt`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptJugadas =
    "CREATE TABLE `rpt_jugadas` ("
    "`id_rpt` double NOT NULL AUTO_INCREMENT,"
    "`numero` int(11) NOT NULL DEFAULT '0',"
    "`boleto` varchar(45) NOT NULL DEFAULT '',"
    "`monto` double NOT NULL DEFAULT '0',"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`caballo` int(11) NOT NULL DEFAULT '0',"
    "`puesto` double NOT NULL DEFAULT '0',"
    "`tablas` double NOT NULL DEFAULT '0',"
    "`ganadores` double NOT NULL DEFAULT '0',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`grupo` varchar(45) NOT NULL DEFAULT '',"
    "`cobrado` double NOT NULL DEFAULT '0',"
    "`estatus` int(10) unsigned NOT NULL DEFAULT '0',"
    "`porcobrar` double NOT NULL DEFAULT '0',"
    "`cobradoreal` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id_rpt`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kConfLocal =
    "CREATE TABLE `conf_local` ("
    "`id` int(11) NOT NULL DEFAULT '0',"
    "`impresion` int(11) NOT NULL DEFAULT '0',"
    "`puerto` varchar(10) NOT NULL DEFAULT '',"
    "`ip_secundaria` varchar(45) NOT NULL DEFAULT '',"
    "`version` int(11) NOT NULL DEFAULT '0',"
    "`tamletra` int(11) NOT NULL DEFAULT '0',"
    "`grupo` varchar(45) NOT NULL DEFAULT '',"
    "`ip` varchar(200) NOT NULL DEFAULT '',"
    "`server` varchar(15) NOT NULL DEFAULT '',"
    "`codbarras` int(11) NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

// The secondary server address and the version are the row's two deployment values.
const char* const kConfLocalFila =
    "INSERT INTO `conf_local` (`id`,`impresion`,`puerto`,`ip_secundaria`,`version`,`tamletra`,`grupo`,`ip`,`server`,`codbarras`) "
    "VALUES (1,1,'WINDOWS2:',?,?,8,'','','',1);";

const char* const kRptDiarioRemate =
    "CREATE TABLE `rpt_diarioremate` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`numero` int(11) NOT NULL DEFAULT '0',"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`caballo` varchar(45) NOT NULL DEFAULT '',"
    "`tabla1` double NOT NULL DEFAULT '0',"
    "`mesa1` varchar(15) NOT NULL DEFAULT '',"
    "`tabla2` double NOT NULL DEFAULT '0',"
    "`mesa2` varchar(15) NOT NULL DEFAULT '',"
    "`tabla3` double NOT NULL DEFAULT '0',"
    "`mesa3` varchar(15) NOT NULL DEFAULT '',"
    "`pote` double NOT NULL DEFAULT '0',"
    "`porcentaje` double NOT NULL DEFAULT '0',"
    "`casa1` double NOT NULL DEFAULT '0',"
    "`casa2` double NOT NULL DEFAULT '0',"
    "`casa3` double NOT NULL DEFAULT '0',"
    "`tablazo` double NOT NULL DEFAULT '0',"
    "`montocasa` double NOT NULL DEFAULT '0',"
    "`caballocasa` int(11) NOT NULL DEFAULT '0',"
    "`centrohipico` varchar(45) NOT NULL DEFAULT '',"
    "`tablaz1` double NOT NULL DEFAULT '0',"
    "`tablaz2` double NOT NULL DEFAULT '0',"
    "`tablaz3` double NOT NULL DEFAULT '0',"
    "`tablaz4` double NOT NULL DEFAULT '0',"
    "`tabla4` double NOT NULL DEFAULT '0',"
    "`casa4` double NOT NULL DEFAULT '0',"
    "`mesa4` varchar(15) NOT NULL DEFAULT '',"
    "`pote2` double NOT NULL DEFAULT '0',"
    "`montocasa2` double NOT NULL DEFAULT '0',"
    "`tabla5` double NOT NULL DEFAULT '0',"
    "`mesa5` varchar(15) NOT NULL DEFAULT '0',"
    "`casa5` double NOT NULL DEFAULT '0',"
    "`tabla6` double NOT NULL DEFAULT '0',"
    "`mesa6` varchar(15) NOT NULL DEFAULT '',"
    "`casa6` double NOT NULL DEFAULT '0',"
    "`tabla7` double NOT NULL DEFAULT '0',"
    "`mesa7` varchar(15) NOT NULL DEFAULT '',"
    "`casa7` double NOT NULL DEFAULT '0',"
    "`tabla8` double NOT NULL DEFAULT '0',"
    "`mesa8` varchar(15) NOT NULL DEFAULT '',"
    "`casa8` double NOT NULL DEFAULT '0',"
    "`tabla9` double NOT NULL DEFAULT '0',"
    "`mesa9` varchar(15) NOT NULL DEFAULT '',"
    "`casa9` double NOT NULL DEFAULT '0',"
    "`tabla10` double NOT NULL DEFAULT '0',"
    "`mesa10` varchar(15) NOT NULL DEFAULT '',"
    "`casa10` double NOT NULL DEFAULT '0',"
    "`tablacasa` double NOT NULL DEFAULT '0',"
    "`tablacasa2` double NOT NULL DEFAULT '0',"
    "`porfinal1` double NOT NULL DEFAULT '0',"
    "`porfinal2` double NOT NULL DEFAULT '0',"
    "`porfinal3` double NOT NULL DEFAULT '0',"
    "`porfinal4` double NOT NULL DEFAULT '0',"
    "`t1` double NOT NULL DEFAULT '0',"
    "`t2` double NOT NULL DEFAULT '0',"
    "`t3` double NOT NULL DEFAULT '0',"
    "`t4` double NOT NULL DEFAULT '0',"
    "`t5` double NOT NULL DEFAULT '0',"
    "`porfinal5` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptBitacora =
    "CREATE TABLE `rpt_bitacora` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`numero` int(11) NOT NULL DEFAULT '0',"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`caballo` int(11) NOT NULL DEFAULT '0',"
    "`ganadores` double NOT NULL DEFAULT '0',"
    "`taquilla` char(15) NOT NULL DEFAULT '',"
    "`grupo` char(5) NOT NULL DEFAULT '',"
    "`hora` varchar(15) NOT NULL DEFAULT '',"
    "`fecha` date NOT NULL DEFAULT '0000-00-00',"
    "`nu_boleto` varchar(25) NOT NULL DEFAULT '',"
    "`cobrado` double NOT NULL DEFAULT '0',"
    "`motivo` varchar(255) NOT NULL DEFAULT '',"
    "`usuario` varchar(10) NOT NULL DEFAULT '',"
    "`tipo_motivo` varchar(15) NOT NULL DEFAULT '',"
    "`fecha_inicio` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_final` varchar(45) NOT NULL DEFAULT '',"
    "`estatus` int(11) NOT NULL DEFAULT '0',"
    "`monto` double NOT NULL DEFAULT '0',"
    "`tablas` int(11) NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptDiarioRemateFinal =
    "CREATE TABLE `rpt_diariorematefinal` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`venta` double NOT NULL DEFAULT '0',"
    "`porcentaje` double NOT NULL DEFAULT '0',"
    "`casanueve` double NOT NULL DEFAULT '0',"
    "`premios` double NOT NULL DEFAULT '0',"
    "`monto_casa` double NOT NULL DEFAULT '0',"
    "`tablazo` double NOT NULL DEFAULT '0',"
    "`pote` double NOT NULL DEFAULT '0',"
    "`ganancia` double NOT NULL DEFAULT '0',"
    "`caballocasa` int(11) NOT NULL DEFAULT '0',"
    "`centrohipico` varchar(45) NOT NULL DEFAULT '',"
    "`venta2` double NOT NULL DEFAULT '0',"
    "`porcentaje2` double NOT NULL DEFAULT '0',"
    "`casanueve2` double NOT NULL DEFAULT '0',"
    "`premios2` double NOT NULL DEFAULT '0',"
    "`monto_casa2` double NOT NULL DEFAULT '0',"
    "`tablazo2` double NOT NULL DEFAULT '0',"
    "`pote2` double NOT NULL DEFAULT '0',"
    "`ganancia2` double NOT NULL DEFAULT '0',"
    "`caballocasa2` double NOT NULL DEFAULT '0',"
    "`tab1gan` double NOT NULL DEFAULT '0',"
    "`tab2gan` double NOT NULL DEFAULT '0',"
    "`tab3gan` double NOT NULL DEFAULT '0',"
    "`tab4gan` double NOT NULL DEFAULT '0',"
    "`tab5gan` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptDividendos =
    "CREATE TABLE `rpt_dividendos` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`caballo` varchar(45) NOT NULL DEFAULT '',"
    "`num_cab` int(11) NOT NULL DEFAULT '0',"
    "`dividendo` double NOT NULL DEFAULT '0',"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`num_cab2` int(11) NOT NULL DEFAULT '0',"
    "`dividendo2` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptGeneral =
    "CREATE TABLE `rpt_general` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`fecha` date NOT NULL DEFAULT '0000-00-00',"
    "`ganadores` double NOT NULL DEFAULT '0',"
    "`tablafija` double NOT NULL DEFAULT '0',"
    "`remate` double NOT NULL DEFAULT '0',"
    "`macuare` double NOT NULL DEFAULT '0',"
    "`puestos` double NOT NULL DEFAULT '0',"
    "`polla` double NOT NULL DEFAULT '0',"
    "`fecha_inicio` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_final` varchar(45) NOT NULL DEFAULT '',"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`dinamicas` double NOT NULL DEFAULT '0',"
    "`descargas` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptResultadosCarreras =
    "CREATE TABLE `rpt_resultadoscarreras` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`jugado` double NOT NULL DEFAULT '0',"
    "`cobrado` double NOT NULL DEFAULT '0',"
    "`total` double NOT NULL DEFAULT '0',"
    "`monto_porpagar` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptDiarioMC =
    "CREATE TABLE `rpt_diario_mc` ("
    "`id_rpt` double NOT NULL AUTO_INCREMENT,"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`venta` double NOT NULL DEFAULT '0',"
    "`fecha` date NOT NULL DEFAULT '0000-00-00',"
    "`chipico` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_inicio` varchar(45) NOT NULL DEFAULT '',"
    "`fecha_final` varchar(45) NOT NULL DEFAULT '',"
    "`cant_ganadores` int(11) NOT NULL DEFAULT '0',"
    "`total_premios` double NOT NULL DEFAULT '0',"
    "`premios_cobrados` double NOT NULL DEFAULT '0',"
    "`saldo` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id_rpt`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptMacuare =
    "CREATE TABLE `rpt_macuare` ("
    "`id_rpt` double NOT NULL AUTO_INCREMENT,"
    "`numero` int(11) NOT NULL DEFAULT '0',"
    "`boleto` varchar(45) NOT NULL DEFAULT '',"
    "`v1` int(11) NOT NULL DEFAULT '0',"
    "`v2` int(11) NOT NULL DEFAULT '0',"
    "`v3` int(11) NOT NULL DEFAULT '0',"
    "`v4` int(11) NOT NULL DEFAULT '0',"
    "`v5` int(11) NOT NULL DEFAULT '0',"
    "`v6` int(11) NOT NULL DEFAULT '0',"
    "`v7` int(11) NOT NULL DEFAULT '0',"
    "`monto` double NOT NULL DEFAULT '0',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`taquilla` varchar(45) NOT NULL DEFAULT '',"
    "`grupo` varchar(5) NOT NULL DEFAULT '',"
    "`estatus` int(11) NOT NULL DEFAULT '0',"
    "`veces` varchar(45) NOT NULL DEFAULT '',"
    "`nombre` varchar(45) NOT NULL DEFAULT '',"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "PRIMARY KEY (`id_rpt`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptResultadosTaqs =
    "CREATE TABLE `rpt_resultadostaqs` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`fecha` varchar(45) NOT NULL DEFAULT '',"
    "`jugado` double NOT NULL DEFAULT '0',"
    "`cobrado` double NOT NULL DEFAULT '0',"
    "`total` double NOT NULL DEFAULT '0',"
    "`taquilla` varchar(45) NOT NULL DEFAULT '',"
    "`monto_porpagar` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptJugadoresRemate =
    "CREATE TABLE `rpt_jugadores_remate` ("
    "`id` double NOT NULL AUTO_INCREMENT,"
    "`jugador` varchar(45) NOT NULL DEFAULT '',"
    "`monto` double NOT NULL DEFAULT '0',"
    "PRIMARY KEY (`id`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptCaballosTF =
    "CREATE TABLE `rpt_caballos_tf` ("
    "`integer` int(11) NOT NULL AUTO_INCREMENT,"
    "`carrera` int(11) NOT NULL DEFAULT '0',"
    "`numero` int(11) NOT NULL DEFAULT '0',"
    "`caballo` varchar(45) NOT NULL DEFAULT '',"
    "`valor` double NOT NULL DEFAULT '0',"
    "`valor_tabla` double NOT NULL DEFAULT '0',"
    "`ch` varchar(45) NOT NULL DEFAULT '',"
    "`fecha` varchar(15) NOT NULL DEFAULT '',"
    "PRIMARY KEY (`integer`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=latin1;";

const char* const kRptJugadasClientes =
    "CREATE TABLE `rpt_jugadas_clientes` ("
    "`id_jugadas` int(11) NOT NULL AUTO_INCREMENT,"
    "`monto` double NOT NULL DEFAULT '0',"
    "`monto_tipo` varchar(10) NOT NULL DEFAULT '0',"
    "`tipo_operacion` varchar(15) NOT NULL DEFAULT '0',"
    "`fecha` date NOT NULL DEFAULT '0000-00-00',"
    "`hora` varchar(25) NOT NULL DEFAULT '',"
    "`cliente` varchar(25) NOT NULL DEFAULT '0',"
    "`banco` varchar(25) NOT NULL DEFAULT '0',"
    "`nu_operacion` int(11) NOT NULL DEFAULT '0',"
    "`motivo` varchar(15) NOT NULL DEFAULT '',"
    "PRIMARY KEY (`id_jugadas`)"
    ") ENGINE=InnoDB DEFAULT CHARSET=utf8;";

QString nombreSeguro(const QString& base) {
    static const QRegularExpression valido(QStringLiteral("^[A-Za-z0-9_]+$"));
    if (!valido.match(base).hasMatch()) throw DbError("nombre de esquema no válido: " + base.toStdString());
    return base;
}

}  // namespace

const QStringList& tablasLocales() {
    static const QStringList tablas = {
        kRptDiario,          kRptJugadas,         kConfLocal,   kRptDiarioRemate, kRptBitacora,
        kRptDiarioRemateFinal, kRptDividendos,    kRptGeneral,  kRptResultadosCarreras,
        kRptDiarioMC,        kRptMacuare,         kRptResultadosTaqs, kRptJugadoresRemate,
        kRptCaballosTF,      kRptJugadasClientes,
    };
    return tablas;
}

void CrearBDLocal(const Config& config) {
    const QString base = nombreSeguro(config.localBase);
    {
        auto servidor = Db::open(cadenaLocalSinBase(config));
        servidor->exec(("CREATE DATABASE `" + base + "`;").toStdString());
    }
    auto db = Db::open(cadenaLocalConBase(config));
    for (const QString& ddl : tablasLocales()) {
        db->exec(ddl.toStdString());
        if (ddl.startsWith(QLatin1String("CREATE TABLE `conf_local`")))
            db->exec(kConfLocalFila, {config.ipSecundaria, kVersionNumero});
    }
}

}  // namespace hipico
