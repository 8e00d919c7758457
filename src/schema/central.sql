-- Central schema of hipico: every table the program reads or writes.
--
-- Conventions:
--  * Dates are text "YYYY-MM-DD" (compared as text), times text "hh:mm:ss".
--  * Amounts are doubles; flags and small codes are integers.
--  * Columns are NOT NULL with a default, so that a positional insert that
--    leaves a value empty stores '' or 0. One exception: a ticket's sale
--    token `ficha` is NULL when no booth chose one, so that its unique index
--    holds only the tokens booths chose.
--  * Where a table is inserted positionally ("INSERT INTO `t` VALUES (NULL,"
--    ...), its column order below is the order of those values; the order of
--    each such table is explained in docs/decisions.md.
--  * Every table has a primary key; the hot lookups have their indexes.

-- Users. Inserted positionally with every value (the key included).
CREATE TABLE `usuarios` (
  `id_usuario` INT NOT NULL AUTO_INCREMENT,
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `clave` VARCHAR(100) NOT NULL DEFAULT '',
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  `nivel` VARCHAR(30) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `estatus` VARCHAR(10) NOT NULL DEFAULT 'Activo',
  `fecha_ingreso` VARCHAR(10) NOT NULL DEFAULT '',
  `hora_ingreso` VARCHAR(15) NOT NULL DEFAULT '',
  `mac` VARCHAR(45) NOT NULL DEFAULT '',
  `ip_pc` VARCHAR(45) NOT NULL DEFAULT '',
  `version` VARCHAR(15) NOT NULL DEFAULT '',
  `plantilla` VARCHAR(45) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_usuario`),
  KEY `ix_usuarios_usuario` (`usuario`),
  KEY `ix_usuarios_grupo` (`grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Subgroups: each holds groups (grupos.subgrupo = subgrupos.subgrupo).
CREATE TABLE `subgrupos` (
  `id_subgrupo` INT NOT NULL AUTO_INCREMENT,
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_subgrupo`),
  KEY `ix_subgrupos_subgrupo` (`subgrupo`),
  KEY `ix_subgrupos_nombre` (`nombre`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Groups (agencies) with every parameter: identity, games, shares, auction
-- settings, the dividend rule and the sale limits and switches.
CREATE TABLE `grupos` (
  `id_grupo` INT NOT NULL AUTO_INCREMENT,
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT 'N/A',
  `contacto` VARCHAR(100) NOT NULL DEFAULT '',
  `telefono` VARCHAR(45) NOT NULL DEFAULT '',
  `fecha_ingreso` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha_salida` VARCHAR(10) NOT NULL DEFAULT '',
  `estatus` VARCHAR(10) NOT NULL DEFAULT 'Activo',
  `name_empresa` VARCHAR(100) NOT NULL DEFAULT '',
  `rif_empresa` VARCHAR(45) NOT NULL DEFAULT '',
  `direccion_empresa` VARCHAR(200) NOT NULL DEFAULT '',
  `tlf_empresa` VARCHAR(45) NOT NULL DEFAULT '',
  `correo` VARCHAR(100) NOT NULL DEFAULT '',
  `encargado` VARCHAR(100) NOT NULL DEFAULT '',
  `telefono_enc` VARCHAR(45) NOT NULL DEFAULT '',
  -- games the group sells
  `ganadores` INT NOT NULL DEFAULT 1,
  `tablafija` INT NOT NULL DEFAULT 0,
  `macuare` INT NOT NULL DEFAULT 0,
  `subastas` INT NOT NULL DEFAULT 0,
  `conx_tf` INT NOT NULL DEFAULT 0,
  `conx_pt` INT NOT NULL DEFAULT 0,
  `conx_td` INT NOT NULL DEFAULT 0,
  -- shares of the weekly result
  `por_ch` DOUBLE NOT NULL DEFAULT 0,
  `por_casa` DOUBLE NOT NULL DEFAULT 0,
  `por_admin` DOUBLE NOT NULL DEFAULT 0,
  -- sign-in and booth switches
  `bloqueo` INT NOT NULL DEFAULT 0,
  `ticket_cobro` INT NOT NULL DEFAULT 0,
  `permitirpdiv` INT NOT NULL DEFAULT 0,
  `anular_boleto_win` INT NOT NULL DEFAULT 0,
  `clientes` INT NOT NULL DEFAULT 0,
  `duracionboletos` INT NOT NULL DEFAULT 3,
  `VerBoletosTaq` INT NOT NULL DEFAULT 0,
  `report_taqs` VARCHAR(10) NOT NULL DEFAULT '0',
  `mascara` INT NOT NULL DEFAULT 0,
  `min_bs` DOUBLE NOT NULL DEFAULT 0,
  `min_dol` DOUBLE NOT NULL DEFAULT 0,
  `mensajech` VARCHAR(255) NOT NULL DEFAULT '',
  `mensajetf` VARCHAR(255) NOT NULL DEFAULT '',
  `mensajemc` VARCHAR(255) NOT NULL DEFAULT '',
  -- winner-bet sale parameters
  `cab_max` INT NOT NULL DEFAULT 16,
  `carrera` INT NOT NULL DEFAULT 0,
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `valor_ganador` DOUBLE NOT NULL DEFAULT 0,
  `apuesta_max_win` DOUBLE NOT NULL DEFAULT 0,
  `apuesta_maxwin` INT NOT NULL DEFAULT 0,
  `cupo_winxjugador` DOUBLE NOT NULL DEFAULT 0,
  `cupovip` DOUBLE NOT NULL DEFAULT 0,
  `inicialboleto` INT NOT NULL DEFAULT 0,
  `clave_win` VARCHAR(45) NOT NULL DEFAULT '',
  `pedirclave` INT NOT NULL DEFAULT 0,
  `admin_cupo` INT NOT NULL DEFAULT 0,
  `opcioncupowin` INT NOT NULL DEFAULT 0,
  `empresa` VARCHAR(100) NOT NULL DEFAULT '',
  `rif` VARCHAR(45) NOT NULL DEFAULT '',
  `impresion_datos` INT NOT NULL DEFAULT 0,
  `venta_ganadores` INT NOT NULL DEFAULT 1,
  -- fixed-table and combination sale parameters
  `venta_tf` INT NOT NULL DEFAULT 0,
  `venta_macuare` INT NOT NULL DEFAULT 0,
  `apuesta_max_tf` DOUBLE NOT NULL DEFAULT 0,
  `cupo_tf_opcion` INT NOT NULL DEFAULT 0,
  `cupoviptf` INT NOT NULL DEFAULT 0,
  `veces_mc` INT NOT NULL DEFAULT 0,
  `apuesta_max_mc` DOUBLE NOT NULL DEFAULT 0,
  `cupo_mc` DOUBLE NOT NULL DEFAULT 0,
  -- auction settings
  `por_remate` DOUBLE NOT NULL DEFAULT 0,
  `por_rematador` DOUBLE NOT NULL DEFAULT 0,
  `tablazo` DOUBLE NOT NULL DEFAULT 0,
  `tablaz1` DOUBLE NOT NULL DEFAULT 0,
  `tablaz2` DOUBLE NOT NULL DEFAULT 0,
  `tablaz3` DOUBLE NOT NULL DEFAULT 0,
  `tablaz4` DOUBLE NOT NULL DEFAULT 0,
  `no_aut_3t` INT NOT NULL DEFAULT 0,
  `pradmincrear` INT NOT NULL DEFAULT 0,
  `minimo_remate` DOUBLE NOT NULL DEFAULT 0,
  `rematetam` INT NOT NULL DEFAULT 0,
  `poted` DOUBLE NOT NULL DEFAULT 0,
  `doblaje` DOUBLE NOT NULL DEFAULT 0,
  `hdp` INT NOT NULL DEFAULT 0,
  `por_hdp` DOUBLE NOT NULL DEFAULT 0,
  `ccasarem` INT NOT NULL DEFAULT 0,
  -- manager switches
  `admincupo` INT NOT NULL DEFAULT 0,
  `admindiv` INT NOT NULL DEFAULT 0,
  `gerente_eliminar` INT NOT NULL DEFAULT 0,
  `visualboletosgerente` INT NOT NULL DEFAULT 0,
  `pedir_motivo` INT NOT NULL DEFAULT 0,
  `permitiranulartf` INT NOT NULL DEFAULT 0,
  `nosumarret` INT NOT NULL DEFAULT 0,
  `nu_administrador` VARCHAR(45) NOT NULL DEFAULT '',
  `nu_tecnico` VARCHAR(45) NOT NULL DEFAULT '',
  `supervisorTF` VARCHAR(45) NOT NULL DEFAULT '',
  -- dividend rule
  `divopc` INT NOT NULL DEFAULT 0,
  `mododiv` INT NOT NULL DEFAULT 0,
  `rango1` DOUBLE NOT NULL DEFAULT 0,
  `rango2` DOUBLE NOT NULL DEFAULT 0,
  `rango3` DOUBLE NOT NULL DEFAULT 0,
  `rango4` DOUBLE NOT NULL DEFAULT 0,
  `rango5` DOUBLE NOT NULL DEFAULT 0,
  `rango6` DOUBLE NOT NULL DEFAULT 0,
  `rango7` DOUBLE NOT NULL DEFAULT 0,
  `rango8` DOUBLE NOT NULL DEFAULT 0,
  `rango9` DOUBLE NOT NULL DEFAULT 0,
  `rango10` DOUBLE NOT NULL DEFAULT 0,
  `valor_r1` DOUBLE NOT NULL DEFAULT 0,
  `valor_r2` DOUBLE NOT NULL DEFAULT 0,
  `valor_r3` DOUBLE NOT NULL DEFAULT 0,
  `valor_r4` DOUBLE NOT NULL DEFAULT 0,
  `valor_r5` DOUBLE NOT NULL DEFAULT 0,
  `opciondiv1` INT NOT NULL DEFAULT 0,
  `opciondiv2` INT NOT NULL DEFAULT 0,
  `opciondiv3` INT NOT NULL DEFAULT 0,
  `opciondiv4` INT NOT NULL DEFAULT 0,
  `topefavorito` DOUBLE NOT NULL DEFAULT 0,
  `condicionado` INT NOT NULL DEFAULT 0,
  `4cabr1` DOUBLE NOT NULL DEFAULT 0,
  `4cabr2` DOUBLE NOT NULL DEFAULT 0,
  `4cabr3` DOUBLE NOT NULL DEFAULT 0,
  `4cabr4` DOUBLE NOT NULL DEFAULT 0,
  `4cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `4cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `4cabop1` INT NOT NULL DEFAULT 0,
  `4cabop2` INT NOT NULL DEFAULT 0,
  `5cabr1` DOUBLE NOT NULL DEFAULT 0,
  `5cabr2` DOUBLE NOT NULL DEFAULT 0,
  `5cabr3` DOUBLE NOT NULL DEFAULT 0,
  `5cabr4` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `5cabop1` INT NOT NULL DEFAULT 0,
  `5cabop2` INT NOT NULL DEFAULT 0,
  `6cabr1` DOUBLE NOT NULL DEFAULT 0,
  `6cabr2` DOUBLE NOT NULL DEFAULT 0,
  `6cabr3` DOUBLE NOT NULL DEFAULT 0,
  `6cabr4` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `6cabop1` INT NOT NULL DEFAULT 0,
  `6cabop2` INT NOT NULL DEFAULT 0,
  `7cabr1` DOUBLE NOT NULL DEFAULT 0,
  `7cabr2` DOUBLE NOT NULL DEFAULT 0,
  `7cabr3` DOUBLE NOT NULL DEFAULT 0,
  `7cabr4` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `7cabop1` INT NOT NULL DEFAULT 0,
  `7cabop2` INT NOT NULL DEFAULT 0,
  `empate` INT NOT NULL DEFAULT 0,
  `empatemin` DOUBLE NOT NULL DEFAULT 0,
  `empate1` DOUBLE NOT NULL DEFAULT 0,
  `empate2` DOUBLE NOT NULL DEFAULT 0,
  `empate3` DOUBLE NOT NULL DEFAULT 0,
  `empate4` DOUBLE NOT NULL DEFAULT 0,
  `empate5` DOUBLE NOT NULL DEFAULT 0,
  `redondear` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_grupo`),
  KEY `ix_grupos_grupo` (`grupo`),
  KEY `ix_grupos_ch` (`ch`),
  KEY `ix_grupos_subgrupo` (`subgrupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- System settings: exactly one row (id 1), joined without condition into
-- sales queries.
CREATE TABLE `configuracion` (
  `id` INT NOT NULL DEFAULT 1,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `version` DOUBLE NOT NULL DEFAULT 0,
  `web` VARCHAR(255) NOT NULL DEFAULT '',
  `empresa` VARCHAR(100) NOT NULL DEFAULT '',
  `rif` VARCHAR(45) NOT NULL DEFAULT '',
  `impresion_datos` INT NOT NULL DEFAULT 0,
  `mora` VARCHAR(100) NOT NULL DEFAULT '',
  `mensaje` VARCHAR(255) NOT NULL DEFAULT '',
  `mensajetaq` VARCHAR(255) NOT NULL DEFAULT '',
  `centrarform` INT NOT NULL DEFAULT 0,
  `modoventa` INT NOT NULL DEFAULT 0,
  `funtdolar` INT NOT NULL DEFAULT 0,
  `permitir_tf` INT NOT NULL DEFAULT 0,
  `permitir_mc` INT NOT NULL DEFAULT 0,
  `valor_ganador` DOUBLE NOT NULL DEFAULT 1,
  `valortablafija` DOUBLE NOT NULL DEFAULT 0,
  `apuesta_max_win` DOUBLE NOT NULL DEFAULT 0,
  `cupo_tf` DOUBLE NOT NULL DEFAULT 0,
  `venta_ganadores` INT NOT NULL DEFAULT 0,
  `venta_remate` INT NOT NULL DEFAULT 0,
  `venta_macuare` INT NOT NULL DEFAULT 0,
  `venta_tf` INT NOT NULL DEFAULT 0,
  `dias` INT NOT NULL DEFAULT 3,
  `rpt_taquillaconfirmar` INT NOT NULL DEFAULT 0,
  `ventas4` INT NOT NULL DEFAULT 0,
  `monto_condicionado` DOUBLE NOT NULL DEFAULT 0,
  `tipo_pantalla` INT NOT NULL DEFAULT 0,
  `conexion` VARCHAR(255) NOT NULL DEFAULT '',
  `no_anular_cerrada` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  CONSTRAINT `ck_configuracion_una_fila` CHECK (`id` = 1)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Racetracks.
CREATE TABLE `hipodromos` (
  `id_hipodromo` INT NOT NULL AUTO_INCREMENT,
  `hipodromo` VARCHAR(100) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 1,
  PRIMARY KEY (`id_hipodromo`),
  KEY `ix_hipodromos_hipodromo` (`hipodromo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Race card: one row per horse of a race of a track on a date. The sale
-- flags are closed (0) until a race is opened.
CREATE TABLE `carreras` (
  `id_carrera` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `caballo` VARCHAR(100) NOT NULL DEFAULT '',
  `nu_caballo` INT NOT NULL DEFAULT 0,
  `retirado` INT NOT NULL DEFAULT 0,
  `retirado_tf` INT NOT NULL DEFAULT 0,
  `favorito` INT NOT NULL DEFAULT 0,
  `win` INT NOT NULL DEFAULT 0,
  `win_ganadores` INT NOT NULL DEFAULT 0,
  `win_ganadores2` INT NOT NULL DEFAULT 0,
  `dividendo` DOUBLE NOT NULL DEFAULT 0,
  `dividendo2` DOUBLE NOT NULL DEFAULT 0,
  `estado` INT NOT NULL DEFAULT 0,
  `estado_tf` INT NOT NULL DEFAULT 0,
  `estado_puestos` INT NOT NULL DEFAULT 0,
  `bloqueotf` INT NOT NULL DEFAULT 0,
  `valor_tf` DOUBLE NOT NULL DEFAULT 0,
  `venta` INT NOT NULL DEFAULT 0,
  `venta_tf` INT NOT NULL DEFAULT 0,
  `venta_rm` INT NOT NULL DEFAULT 0,
  `venta_mc` INT NOT NULL DEFAULT 0,
  `apuesta_max_win` DOUBLE NOT NULL DEFAULT 0,
  `apuesta_max_tf` DOUBLE NOT NULL DEFAULT 0,
  `puesto` INT NOT NULL DEFAULT 0,
  `llegada` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_carrera`),
  KEY `ix_carreras_fecha_carrera` (`fecha`, `carrera`, `id_hipodromo`),
  KEY `ix_carreras_fecha_hipodromo` (`fecha`, `id_hipodromo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Known horse names (duplicates allowed by design).
CREATE TABLE `caballos` (
  `id_caballo` INT NOT NULL AUTO_INCREMENT,
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_caballo`),
  KEY `ix_caballos_nombre` (`nombre`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Winner-bet tickets. `numero` is the ticket number: the key the insert
-- generates. Numbers start at 1000, so every ticket's number has at least
-- four digits and its sale keys bind the horse, the units and the group. The sale inserts positionally (NULL then 19 values, the
-- last one the booth's sale token `ficha`, unique: a sale whose commit was cut
-- off is found by it); the sale authorised with the supervisor password
-- writes the same row and leaves the sale keys at "0".
CREATE TABLE `ma_principal` (
  `numero` INT NOT NULL AUTO_INCREMENT,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `ganadores` DOUBLE NOT NULL DEFAULT 0,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `estatus` INT NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `llave` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave2` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave3` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave4` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave5` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave6` VARCHAR(64) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`numero`),
  UNIQUE KEY `ux_ma_principal_ficha` (`ficha`),
  KEY `ix_ma_principal_boleto` (`nu_boleto`),
  KEY `ix_ma_principal_carrera` (`fecha`, `carrera`, `caballo`, `grupo`),
  KEY `ix_ma_principal_grupo` (`grupo`, `fecha`, `carrera`),
  KEY `ix_ma_principal_ch` (`ch`, `fecha`, `numero`)
) ENGINE=InnoDB AUTO_INCREMENT=1000 DEFAULT CHARSET=utf8mb4;

-- Group copy of winner-bet tickets (kept days): its own key, then the
-- ticket's columns in the order of ma_principal.
CREATE TABLE `ventas_ganadores` (
  `id_venta` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `ganadores` DOUBLE NOT NULL DEFAULT 0,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `estatus` INT NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `llave` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave2` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave3` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave4` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave5` VARCHAR(64) NOT NULL DEFAULT '0',
  `llave6` VARCHAR(64) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`id_venta`),
  KEY `ix_ventas_ganadores_boleto` (`nu_boleto`),
  KEY `ix_ventas_ganadores_carrera` (`fecha`, `carrera`, `caballo`, `grupo`),
  KEY `ix_ventas_ganadores_ch` (`ch`, `fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Audit snapshot of a race's tickets: NULL, 12 values, then two zeros.
CREATE TABLE `ventas_auditoria` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '',
  `id_juego` INT NOT NULL DEFAULT 0,
  `id_moneda` INT NOT NULL DEFAULT 0,
  `tablas` DOUBLE NOT NULL DEFAULT 0,
  `puesto` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  KEY `ix_ventas_auditoria_carrera` (`carrera`, `nu_boleto`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Fixed-table tickets: `numero` is the generated key, then 13 values (the
-- last one the booth's sale token, as in ma_principal).
CREATE TABLE `tablafija` (
  `numero` INT NOT NULL AUTO_INCREMENT,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `tablas` DOUBLE NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `estatus` INT NOT NULL DEFAULT 0,
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`numero`),
  UNIQUE KEY `ux_tablafija_ficha` (`ficha`),
  KEY `ix_tablafija_boleto` (`nu_boleto`),
  KEY `ix_tablafija_carrera` (`fecha`, `carrera`, `caballo`, `grupo`),
  KEY `ix_tablafija_ch` (`ch`, `numero`)
) ENGINE=InnoDB AUTO_INCREMENT=1000 DEFAULT CHARSET=utf8mb4;

-- Fixed-table tickets of kept days: own key, then the columns of tablafija.
CREATE TABLE `ventas_tf` (
  `id_venta` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `tablas` DOUBLE NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `estatus` INT NOT NULL DEFAULT 0,
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`id_venta`),
  KEY `ix_ventas_tf_boleto` (`nu_boleto`),
  KEY `ix_ventas_tf_carrera` (`fecha`, `carrera`, `grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Combination (Macuare) tickets: `numero` is the generated key.
CREATE TABLE `macuares` (
  `numero` INT NOT NULL AUTO_INCREMENT,
  `boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `veces` INT NOT NULL DEFAULT 1,
  `v1` INT NOT NULL DEFAULT 0,
  `v2` INT NOT NULL DEFAULT 0,
  `v3` INT NOT NULL DEFAULT 0,
  `v4` INT NOT NULL DEFAULT 0,
  `v5` INT NOT NULL DEFAULT 0,
  `v6` INT NOT NULL DEFAULT 0,
  `v7` INT NOT NULL DEFAULT 0,
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `combinacion` VARCHAR(60) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  `confirmacion` INT NOT NULL DEFAULT 0,
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`numero`),
  UNIQUE KEY `ux_macuares_ficha` (`ficha`),
  KEY `ix_macuares_boleto` (`boleto`),
  KEY `ix_macuares_combinacion` (`combinacion`, `fecha`, `grupo`),
  KEY `ix_macuares_taquilla` (`taquilla`, `numero`),
  KEY `ix_macuares_fecha` (`fecha`, `grupo`),
  -- The settlement of a day: its due and paid tickets and the groups' sums
  -- read from the index alone; the tickets that hit the legs found by their picks.
  KEY `ix_macuares_estatus` (`fecha`, `estatus`, `grupo`, `monto`, `veces`, `cobrado`),
  KEY `ix_macuares_piernas` (`fecha`, `v1`, `v2`, `v3`, `v4`, `v5`, `v6`, `v7`)
) ENGINE=InnoDB AUTO_INCREMENT=1000 DEFAULT CHARSET=utf8mb4;

-- Combination tickets of kept days: own key, then the columns of macuares.
CREATE TABLE `ventas_mc` (
  `id_venta` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `veces` INT NOT NULL DEFAULT 1,
  `v1` INT NOT NULL DEFAULT 0,
  `v2` INT NOT NULL DEFAULT 0,
  `v3` INT NOT NULL DEFAULT 0,
  `v4` INT NOT NULL DEFAULT 0,
  `v5` INT NOT NULL DEFAULT 0,
  `v6` INT NOT NULL DEFAULT 0,
  `v7` INT NOT NULL DEFAULT 0,
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `combinacion` VARCHAR(60) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  `confirmacion` INT NOT NULL DEFAULT 0,
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '0',
  `ficha` VARCHAR(32) NULL DEFAULT NULL,
  PRIMARY KEY (`id_venta`),
  KEY `ix_ventas_mc_boleto` (`boleto`),
  KEY `ix_ventas_mc_fecha` (`fecha`, `grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Every distinct combination sold on a day: key plus 4 values.
CREATE TABLE `combinaciones_general` (
  `id_combinacion` INT NOT NULL AUTO_INCREMENT,
  `combinacion` VARCHAR(60) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_combinacion`),
  UNIQUE KEY `ux_combinaciones_combinacion` (`combinacion`, `fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The Macuare of a day: its seven legs (races carrera1 .. carrera1 + 6 of the
-- track), the house share of its sales, and what its settlement found: the
-- amount carried in from the last settled day, the pool, the winning tickets,
-- and the pool carried to the next day when no ticket hit every leg.
-- Sales share-lock the row; opening, closing and settling lock it.
CREATE TABLE `macuare_dias` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `carrera1` INT NOT NULL DEFAULT 1,
  `porcentaje_casa` DOUBLE NOT NULL DEFAULT 20,
  `arrastre` DOUBLE NOT NULL DEFAULT 0,
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `pozo` DOUBLE NOT NULL DEFAULT 0,
  `boletos_ganadores` INT NOT NULL DEFAULT 0,
  `arrastre_siguiente` DOUBLE NOT NULL DEFAULT 0,
  `procesado` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_macuare_dias_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Audit log of voided Macuare tickets: the ticket's columns, the reason and the user.
CREATE TABLE `bitacora_mc` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `veces` INT NOT NULL DEFAULT 1,
  `combinacion` VARCHAR(60) NOT NULL DEFAULT '',
  `nombre` VARCHAR(100) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `estatus` INT NOT NULL DEFAULT 0,
  `motivo` VARCHAR(255) NOT NULL DEFAULT '',
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  PRIMARY KEY (`id`),
  KEY `ix_bitacora_mc_fecha` (`fecha`, `taquilla`, `estatus`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Winning horses of the combination legs (up to three per leg in a dead heat).
CREATE TABLE `caballos_ganadores` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `c1_1` INT NOT NULL DEFAULT 0,
  `c1_2` INT NOT NULL DEFAULT 0,
  `c1_3` INT NOT NULL DEFAULT 0,
  `c2_1` INT NOT NULL DEFAULT 0,
  `c2_2` INT NOT NULL DEFAULT 0,
  `c2_3` INT NOT NULL DEFAULT 0,
  `c3_1` INT NOT NULL DEFAULT 0,
  `c3_2` INT NOT NULL DEFAULT 0,
  `c3_3` INT NOT NULL DEFAULT 0,
  `c4_1` INT NOT NULL DEFAULT 0,
  `c4_2` INT NOT NULL DEFAULT 0,
  `c4_3` INT NOT NULL DEFAULT 0,
  `c5_1` INT NOT NULL DEFAULT 0,
  `c5_2` INT NOT NULL DEFAULT 0,
  `c5_3` INT NOT NULL DEFAULT 0,
  `c6_1` INT NOT NULL DEFAULT 0,
  `c6_2` INT NOT NULL DEFAULT 0,
  `c6_3` INT NOT NULL DEFAULT 0,
  `c7_1` INT NOT NULL DEFAULT 0,
  `c7_2` INT NOT NULL DEFAULT 0,
  `c7_3` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  KEY `ix_caballos_ganadores_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Auction board: one row per horse per race per date per centre. Inserted
-- positionally with the 30 values of the board (NULL, date, race, horse
-- name, horse number, then the board's zeros, centre and percentage). The
-- unique key makes two machines that create one board at the same time (on
-- two nodes of a cluster) collide, so the second one finds the first's rows.
CREATE TABLE `carreras_remate` (
  `id_carrera` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` VARCHAR(100) NOT NULL DEFAULT '',
  `nu_caballo` INT NOT NULL DEFAULT 0,
  `retirado` INT NOT NULL DEFAULT 0,
  `mesa1` VARCHAR(15) NOT NULL DEFAULT '',
  `tabla1` DOUBLE NOT NULL DEFAULT 0,
  `mesa2` VARCHAR(15) NOT NULL DEFAULT '',
  `tabla2` DOUBLE NOT NULL DEFAULT 0,
  `mesa3` VARCHAR(15) NOT NULL DEFAULT '',
  `tabla3` DOUBLE NOT NULL DEFAULT 0,
  `mesa4` VARCHAR(15) NOT NULL DEFAULT '',
  `tabla4` DOUBLE NOT NULL DEFAULT 0,
  `pote` DOUBLE NOT NULL DEFAULT 0,
  `tablacasa` DOUBLE NOT NULL DEFAULT 0,
  `invalidado` INT NOT NULL DEFAULT 0,
  `pote2` DOUBLE NOT NULL DEFAULT 0,
  `tablacasa2` DOUBLE NOT NULL DEFAULT 0,
  `invalidado2` INT NOT NULL DEFAULT 0,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `monto_casa` DOUBLE NOT NULL DEFAULT 0,
  `monto_casa2` DOUBLE NOT NULL DEFAULT 0,
  `porcentaje` DOUBLE NOT NULL DEFAULT 0,
  `win` INT NOT NULL DEFAULT 0,
  `win2` INT NOT NULL DEFAULT 0,
  `segundolugar` INT NOT NULL DEFAULT 0,
  `tabla5` DOUBLE NOT NULL DEFAULT 0,
  `mesa5` VARCHAR(15) NOT NULL DEFAULT '',
  `tablazo` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_carrera`),
  UNIQUE KEY `ux_carreras_remate_caballo` (`fecha`, `carrera`, `ch`, `nu_caballo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Dividend rule per centre and track (the per-track option) and the sale
-- limit restored to the centre.
CREATE TABLE `dividendos` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `cupo` DOUBLE NOT NULL DEFAULT 0,
  `rango1` DOUBLE NOT NULL DEFAULT 0,
  `rango2` DOUBLE NOT NULL DEFAULT 0,
  `rango3` DOUBLE NOT NULL DEFAULT 0,
  `rango4` DOUBLE NOT NULL DEFAULT 0,
  `rango5` DOUBLE NOT NULL DEFAULT 0,
  `rango6` DOUBLE NOT NULL DEFAULT 0,
  `rango7` DOUBLE NOT NULL DEFAULT 0,
  `rango8` DOUBLE NOT NULL DEFAULT 0,
  `rango9` DOUBLE NOT NULL DEFAULT 0,
  `rango10` DOUBLE NOT NULL DEFAULT 0,
  `valor_r1` DOUBLE NOT NULL DEFAULT 0,
  `valor_r2` DOUBLE NOT NULL DEFAULT 0,
  `valor_r3` DOUBLE NOT NULL DEFAULT 0,
  `valor_r4` DOUBLE NOT NULL DEFAULT 0,
  `valor_r5` DOUBLE NOT NULL DEFAULT 0,
  `opciondiv1` INT NOT NULL DEFAULT 0,
  `opciondiv2` INT NOT NULL DEFAULT 0,
  `opciondiv3` INT NOT NULL DEFAULT 0,
  `opciondiv4` INT NOT NULL DEFAULT 0,
  `topefavorito` DOUBLE NOT NULL DEFAULT 0,
  `condicionado` INT NOT NULL DEFAULT 0,
  `4cabr1` DOUBLE NOT NULL DEFAULT 0,
  `4cabr2` DOUBLE NOT NULL DEFAULT 0,
  `4cabr3` DOUBLE NOT NULL DEFAULT 0,
  `4cabr4` DOUBLE NOT NULL DEFAULT 0,
  `4cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `4cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `4cabop1` INT NOT NULL DEFAULT 0,
  `4cabop2` INT NOT NULL DEFAULT 0,
  `5cabr1` DOUBLE NOT NULL DEFAULT 0,
  `5cabr2` DOUBLE NOT NULL DEFAULT 0,
  `5cabr3` DOUBLE NOT NULL DEFAULT 0,
  `5cabr4` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `5cabop1` INT NOT NULL DEFAULT 0,
  `5cabop2` INT NOT NULL DEFAULT 0,
  `6cabr1` DOUBLE NOT NULL DEFAULT 0,
  `6cabr2` DOUBLE NOT NULL DEFAULT 0,
  `6cabr3` DOUBLE NOT NULL DEFAULT 0,
  `6cabr4` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `6cabop1` INT NOT NULL DEFAULT 0,
  `6cabop2` INT NOT NULL DEFAULT 0,
  `7cabr1` DOUBLE NOT NULL DEFAULT 0,
  `7cabr2` DOUBLE NOT NULL DEFAULT 0,
  `7cabr3` DOUBLE NOT NULL DEFAULT 0,
  `7cabr4` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr1` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr2` DOUBLE NOT NULL DEFAULT 0,
  `7cabop1` INT NOT NULL DEFAULT 0,
  `7cabop2` INT NOT NULL DEFAULT 0,
  `empate` INT NOT NULL DEFAULT 0,
  `empatemin` DOUBLE NOT NULL DEFAULT 0,
  `empate1` DOUBLE NOT NULL DEFAULT 0,
  `empate2` DOUBLE NOT NULL DEFAULT 0,
  `empate3` DOUBLE NOT NULL DEFAULT 0,
  `empate4` DOUBLE NOT NULL DEFAULT 0,
  `empate5` DOUBLE NOT NULL DEFAULT 0,
  `redondear` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  KEY `ix_dividendos_ch` (`ch`, `id_hipodromo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Extended runner-count rules per centre and track.
CREATE TABLE `dividendos_ampliados` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `5cabr5` DOUBLE NOT NULL DEFAULT 0,
  `5cabr6` DOUBLE NOT NULL DEFAULT 0,
  `5cabr7` DOUBLE NOT NULL DEFAULT 0,
  `5cabr8` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr3` DOUBLE NOT NULL DEFAULT 0,
  `5cabvr4` DOUBLE NOT NULL DEFAULT 0,
  `5cabop3` INT NOT NULL DEFAULT 0,
  `5cabop4` INT NOT NULL DEFAULT 0,
  `6cabr5` DOUBLE NOT NULL DEFAULT 0,
  `6cabr6` DOUBLE NOT NULL DEFAULT 0,
  `6cabr7` DOUBLE NOT NULL DEFAULT 0,
  `6cabr8` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr3` DOUBLE NOT NULL DEFAULT 0,
  `6cabvr4` DOUBLE NOT NULL DEFAULT 0,
  `6cabop3` INT NOT NULL DEFAULT 0,
  `6cabop4` INT NOT NULL DEFAULT 0,
  `7cabr5` DOUBLE NOT NULL DEFAULT 0,
  `7cabr6` DOUBLE NOT NULL DEFAULT 0,
  `7cabr7` DOUBLE NOT NULL DEFAULT 0,
  `7cabr8` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr3` DOUBLE NOT NULL DEFAULT 0,
  `7cabvr4` DOUBLE NOT NULL DEFAULT 0,
  `7cabop3` INT NOT NULL DEFAULT 0,
  `7cabop4` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  KEY `ix_dividendos_ampliados_ch` (`ch`, `id_hipodromo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Conditioned amounts per group, race and horse.
CREATE TABLE `condicionados` (
  `id_condicionado` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `montocond` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_condicionado`),
  KEY `ix_condicionados_carrera` (`fecha`, `grupo`, `carrera`, `caballo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Bets laid off per group and race.
CREATE TABLE `descargas` (
  `id_descarga` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `ganadores` DOUBLE NOT NULL DEFAULT 0,
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_descarga`),
  KEY `ix_descargas_grupo` (`fecha`, `grupo`, `carrera`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Per-centre sale limits of winner bets, one column per horse number.
CREATE TABLE `venta_cupo_ganadores` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `cab1` DOUBLE NOT NULL DEFAULT 0,
  `cab2` DOUBLE NOT NULL DEFAULT 0,
  `cab3` DOUBLE NOT NULL DEFAULT 0,
  `cab4` DOUBLE NOT NULL DEFAULT 0,
  `cab5` DOUBLE NOT NULL DEFAULT 0,
  `cab6` DOUBLE NOT NULL DEFAULT 0,
  `cab7` DOUBLE NOT NULL DEFAULT 0,
  `cab8` DOUBLE NOT NULL DEFAULT 0,
  `cab9` DOUBLE NOT NULL DEFAULT 0,
  `cab10` DOUBLE NOT NULL DEFAULT 0,
  `cab11` DOUBLE NOT NULL DEFAULT 0,
  `cab12` DOUBLE NOT NULL DEFAULT 0,
  `cab13` DOUBLE NOT NULL DEFAULT 0,
  `cab14` DOUBLE NOT NULL DEFAULT 0,
  `cab15` DOUBLE NOT NULL DEFAULT 0,
  `cab16` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_venta_cupo_ganadores_ch` (`ch`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Per-centre sale limits of fixed-table bets.
CREATE TABLE `venta_cupo_tf` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `cab1` DOUBLE NOT NULL DEFAULT 0,
  `cab2` DOUBLE NOT NULL DEFAULT 0,
  `cab3` DOUBLE NOT NULL DEFAULT 0,
  `cab4` DOUBLE NOT NULL DEFAULT 0,
  `cab5` DOUBLE NOT NULL DEFAULT 0,
  `cab6` DOUBLE NOT NULL DEFAULT 0,
  `cab7` DOUBLE NOT NULL DEFAULT 0,
  `cab8` DOUBLE NOT NULL DEFAULT 0,
  `cab9` DOUBLE NOT NULL DEFAULT 0,
  `cab10` DOUBLE NOT NULL DEFAULT 0,
  `cab11` DOUBLE NOT NULL DEFAULT 0,
  `cab12` DOUBLE NOT NULL DEFAULT 0,
  `cab13` DOUBLE NOT NULL DEFAULT 0,
  `cab14` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_venta_cupo_tf_ch` (`ch`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Every closed working day: who closed it, when, the next day it opened and
-- the tickets kept per game.
CREATE TABLE `cierres_dia` (
  `fecha` VARCHAR(10) NOT NULL,
  `fecha_nueva` VARCHAR(10) NOT NULL DEFAULT '',
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `ganadores` INT NOT NULL DEFAULT 0,
  `tablafija` INT NOT NULL DEFAULT 0,
  `macuare` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The booths' cash-ups: the booth's figures of the day when each was done
-- (the figures since the previous one are the difference), the cash
-- expected in the drawer for that stretch, the cash counted and the
-- difference, and the user who counted it.
CREATE TABLE `cuadres_caja` (
  `id_cuadre` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `boletos` INT NOT NULL DEFAULT 0,
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `pagado` DOUBLE NOT NULL DEFAULT 0,
  `anulados` INT NOT NULL DEFAULT 0,
  `esperado` DOUBLE NOT NULL DEFAULT 0,
  `contado` DOUBLE NOT NULL DEFAULT 0,
  `diferencia` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_cuadre`),
  KEY `ix_cuadres_caja_ch` (`ch`, `fecha`, `id_cuadre`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Daily totals per group: sales, prizes, balance and what is still to pay.
CREATE TABLE `ventas_ganadores_general` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `premios` DOUBLE NOT NULL DEFAULT 0,
  `saldo` DOUBLE NOT NULL DEFAULT 0,
  `monto_porpagar` DOUBLE NOT NULL DEFAULT 0,
  `remate` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_ventas_ganadores_general` (`grupo`, `fecha`),
  KEY `ix_ventas_ganadores_general_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE `ventas_tf_general` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `premios` DOUBLE NOT NULL DEFAULT 0,
  `saldo` DOUBLE NOT NULL DEFAULT 0,
  `monto_porpagar` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_ventas_tf_general` (`grupo`, `fecha`),
  KEY `ix_ventas_tf_general_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE `ventas_mc_general` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `premios` DOUBLE NOT NULL DEFAULT 0,
  `saldo` DOUBLE NOT NULL DEFAULT 0,
  `monto_porpagar` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_ventas_mc_general` (`grupo`, `fecha`),
  KEY `ix_ventas_mc_general_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Daily totals of the place and dynamic-table games, one row per group, day and game.
CREATE TABLE `ventas_generales` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `venta` DOUBLE NOT NULL DEFAULT 0,
  `premios` DOUBLE NOT NULL DEFAULT 0,
  `saldo` DOUBLE NOT NULL DEFAULT 0,
  `monto_porpagar` DOUBLE NOT NULL DEFAULT 0,
  `juego` VARCHAR(20) NOT NULL DEFAULT '',
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_ventas_generales` (`grupo`, `fecha`, `juego`),
  KEY `ix_ventas_generales_fecha` (`fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Audit log of voided and changed winner tickets: NULL then 13 values.
CREATE TABLE `bitacora` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `ganadores` DOUBLE NOT NULL DEFAULT 0,
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `motivo` VARCHAR(255) NOT NULL DEFAULT '',
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id`),
  KEY `ix_bitacora_fecha` (`fecha`, `taquilla`, `estatus`),
  KEY `ix_bitacora_grupo` (`grupo`, `fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Audit log of voided fixed-table tickets: NULL then 15 values.
CREATE TABLE `bitacora_tf` (
  `id` INT NOT NULL AUTO_INCREMENT,
  `numero` INT NOT NULL DEFAULT 0,
  `carrera` INT NOT NULL DEFAULT 0,
  `caballo` INT NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `tablas` DOUBLE NOT NULL DEFAULT 0,
  `taquilla` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `estatus` INT NOT NULL DEFAULT 0,
  `nu_boleto` VARCHAR(25) NOT NULL DEFAULT '',
  `cobrado` DOUBLE NOT NULL DEFAULT 0,
  `fecha_cobro` VARCHAR(10) NOT NULL DEFAULT '',
  `motivo` VARCHAR(255) NOT NULL DEFAULT '',
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  PRIMARY KEY (`id`),
  KEY `ix_bitacora_tf_fecha` (`fecha`, `taquilla`, `estatus`),
  KEY `ix_bitacora_tf_grupo` (`grupo`, `fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Client accounts.
CREATE TABLE `tipo_clientes` (
  `id_tipo_cliente` INT NOT NULL AUTO_INCREMENT,
  `tipo` VARCHAR(45) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_tipo_cliente`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE `clientes` (
  `id_cliente` INT NOT NULL AUTO_INCREMENT,
  `cliente` VARCHAR(100) NOT NULL DEFAULT '',
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `observacion` VARCHAR(255) NOT NULL DEFAULT '',
  `tipo_cliente` INT NOT NULL DEFAULT 1,
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `clave` VARCHAR(100) NOT NULL DEFAULT '',
  `estatus` VARCHAR(10) NOT NULL DEFAULT 'Activo',
  `fecha_ingreso` VARCHAR(10) NOT NULL DEFAULT '',
  `id_usuario` INT NOT NULL DEFAULT 0,
  `cupo` DOUBLE NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_cliente`),
  KEY `ix_clientes_usuario` (`usuario`, `ch`),
  KEY `ix_clientes_cliente` (`cliente`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Movements of a client's account (signed: the balance is their sum): NULL then 10 values.
CREATE TABLE `jugadas_clientes` (
  `id_jugadas` INT NOT NULL AUTO_INCREMENT,
  `id_cliente` INT NOT NULL DEFAULT 0,
  `monto` DOUBLE NOT NULL DEFAULT 0,
  `monto_tipo` VARCHAR(45) NOT NULL DEFAULT '',
  `tipo_operacion` INT NOT NULL DEFAULT 0,
  `id_usuario` INT NOT NULL DEFAULT 0,
  `id_banco` INT NOT NULL DEFAULT 0,
  `nu_operacion` VARCHAR(45) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `hora` VARCHAR(15) NOT NULL DEFAULT '',
  `observacion` VARCHAR(255) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_jugadas`),
  KEY `ix_jugadas_clientes_cliente` (`id_cliente`, `fecha`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE `tipo_deposito` (
  `id_tipo_deposito` INT NOT NULL AUTO_INCREMENT,
  `tipo` VARCHAR(45) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_tipo_deposito`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TABLE `bancos` (
  `id_banco` INT NOT NULL AUTO_INCREMENT,
  `banco` VARCHAR(100) NOT NULL DEFAULT '',
  PRIMARY KEY (`id_banco`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Passwords and failed sign-ins. `clave_segura` 1 stores new and changed
-- passwords as Argon2id hashes (0: the reversible cipher); after
-- `intentos_clave` failed sign-ins in a row (0: never) an account is held
-- for `minutos_bloqueo` minutes. The failures are counted per user.
ALTER TABLE `configuracion`
  ADD COLUMN `clave_segura` INT NOT NULL DEFAULT 0,
  ADD COLUMN `intentos_clave` INT NOT NULL DEFAULT 0,
  ADD COLUMN `minutos_bloqueo` INT NOT NULL DEFAULT 15;

CREATE TABLE `intentos_sesion` (
  `usuario` VARCHAR(45) NOT NULL,
  `fallidos` INT NOT NULL DEFAULT 0,
  `retenida_hasta` VARCHAR(19) NOT NULL DEFAULT '',
  PRIMARY KEY (`usuario`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- What each group of a centre has sold on a horse of a race, kept by the
-- server in the transaction of every ticket written or deleted: the sale
-- checks a horse's quota by its key instead of summing the horse's tickets.
-- A ticket's race, horse, units, centre, group and date are never changed
-- (a correction is a void and a new sale), so inserts and deletes keep it.
CREATE TABLE `venta_caballo` (
  `fecha` VARCHAR(10) NOT NULL,
  `carrera` INT NOT NULL,
  `caballo` INT NOT NULL,
  `ch` VARCHAR(45) NOT NULL,
  `grupo` VARCHAR(10) NOT NULL,
  `ganadores` DOUBLE NOT NULL DEFAULT 0,
  `boletos` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`fecha`, `carrera`, `caballo`, `ch`, `grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

CREATE TRIGGER `ma_principal_vendido` AFTER INSERT ON `ma_principal` FOR EACH ROW
  INSERT INTO `venta_caballo` (fecha, carrera, caballo, ch, grupo, ganadores, boletos)
  VALUES (NEW.fecha, NEW.carrera, NEW.caballo, NEW.ch, NEW.grupo, NEW.ganadores, 1)
  ON DUPLICATE KEY UPDATE ganadores = ganadores + NEW.ganadores, boletos = boletos + 1;

CREATE TRIGGER `ma_principal_retirado` AFTER DELETE ON `ma_principal` FOR EACH ROW
  UPDATE `venta_caballo` SET ganadores = ganadores - OLD.ganadores, boletos = boletos - 1
  WHERE fecha = OLD.fecha AND carrera = OLD.carrera AND caballo = OLD.caballo AND ch = OLD.ch AND grupo = OLD.grupo;

-- Tickets sold on a horse's race-card row, counted on a cluster: every sale
-- there writes the row, so a sale and the close of its race (which writes
-- the same row) conflict when they run on two nodes, where each node's
-- locks hold only on itself. A single server orders them by the horse's
-- lock, which the sale holds, and leaves the count alone.
ALTER TABLE `carreras` ADD COLUMN `boletos` INT NOT NULL DEFAULT 0;
-- The same for fixed-table tickets: two sales of one horse on two nodes
-- write the row, so the second one runs again and sees the first's tables
-- against the quota; the fixed table's close writes it too.
ALTER TABLE `carreras` ADD COLUMN `boletos_tf` INT NOT NULL DEFAULT 0;
-- The same for Macuare tickets, on the row of the first leg's horse: a sale
-- and the Macuare close (which writes every leg's rows) conflict on it.
ALTER TABLE `carreras` ADD COLUMN `boletos_mc` INT NOT NULL DEFAULT 0;

-- A race's due tickets (winners and refunds) per group, read whole by the
-- index: what the money journal records after every change of payouts.
ALTER TABLE `ma_principal` ADD KEY `ix_ma_principal_estatus` (`fecha`, `carrera`, `estatus`, `grupo`, `cobrado`);

-- A client's balance, kept by the server in the transaction of every
-- movement written, changed or deleted (the sum of the client's movements
-- stays the account's record). A debit reads it on the client's row under
-- the row's lock and every movement writes that row, so two plays of one
-- client conflict on any node of a cluster and the second, run again,
-- reads the balance the first left.
ALTER TABLE `clientes` ADD COLUMN `saldo` DOUBLE NOT NULL DEFAULT 0;

CREATE TRIGGER `jugadas_clientes_anotada` AFTER INSERT ON `jugadas_clientes` FOR EACH ROW
  UPDATE `clientes` SET saldo = saldo + NEW.monto WHERE id_cliente = NEW.id_cliente;

CREATE TRIGGER `jugadas_clientes_cambiada` AFTER UPDATE ON `jugadas_clientes` FOR EACH ROW
  UPDATE `clientes` SET saldo = saldo + IF(id_cliente = NEW.id_cliente, NEW.monto, 0)
                                      - IF(id_cliente = OLD.id_cliente, OLD.monto, 0)
  WHERE id_cliente IN (OLD.id_cliente, NEW.id_cliente);

CREATE TRIGGER `jugadas_clientes_borrada` AFTER DELETE ON `jugadas_clientes` FOR EACH ROW
  UPDATE `clientes` SET saldo = saldo - OLD.monto WHERE id_cliente = OLD.id_cliente;

-- The money journal: one row per operation that moves money or a ticket's
-- state, written in the operation's own transaction and never changed.
-- Each machine's rows form a chain (`orden` 1, 2, ...): `previo` is the
-- previous row's `huella`, and `huella` the SHA-256 of the row's values.
CREATE TABLE `diario` (
  `id` BIGINT NOT NULL AUTO_INCREMENT,
  `cadena` VARCHAR(64) NOT NULL,
  `orden` BIGINT NOT NULL,
  `momento` VARCHAR(19) NOT NULL,
  `usuario` VARCHAR(45) NOT NULL DEFAULT '',
  `maquina` VARCHAR(64) NOT NULL DEFAULT '',
  `operacion` VARCHAR(20) NOT NULL,
  `tabla` VARCHAR(30) NOT NULL DEFAULT '',
  `codigo` VARCHAR(25) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `unidades` DECIMAL(20,6) NOT NULL DEFAULT 0,
  `monto` DECIMAL(20,6) NOT NULL DEFAULT 0,
  `previo` CHAR(64) NOT NULL,
  `huella` CHAR(64) NOT NULL,
  PRIMARY KEY (`id`),
  UNIQUE KEY `ux_diario_cadena` (`cadena`, `orden`),
  KEY `ix_diario_fecha` (`fecha`, `tabla`, `grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The last row of each chain, kept by the server: an append locks its
-- chain's row here by key (two appends of one machine wait for each other
-- instead of forking the chain), and the verification finds a chain whose
-- last rows were removed.
CREATE TABLE `diario_cola` (
  `cadena` VARCHAR(64) NOT NULL,
  `orden` BIGINT NOT NULL,
  `huella` CHAR(64) NOT NULL,
  PRIMARY KEY (`cadena`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- A row names the end of its chain it follows (`orden` one past it,
-- `previo` its hash): the server moves the chain's end on from exactly that
-- row and refuses the row otherwise, so a writer that knew an older end
-- (another program under the machine's name wrote since, or its own
-- transaction was rolled back) reads the end again and appends once more.
-- A chain's row is created (order 0) before the chain's first append.
DELIMITER $$
CREATE TRIGGER `diario_anotado` AFTER INSERT ON `diario` FOR EACH ROW
BEGIN
  -- Only inside an open transaction: a cluster node that undid the
  -- transaction without failing the statement it was running leaves the
  -- statements after it to run one by one; the row is refused as a
  -- deadlock and the operation runs again whole.
  IF @@in_transaction = 0 THEN
    SIGNAL SQLSTATE '40001' SET MESSAGE_TEXT = 'la fila del diario se escribe dentro de una transaccion',
      MYSQL_ERRNO = 1213;
  END IF;
  UPDATE `diario_cola` SET orden = NEW.orden, huella = NEW.huella
  WHERE cadena = NEW.cadena AND orden = NEW.orden - 1 AND huella = NEW.previo;
  IF ROW_COUNT() = 0 THEN
    SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = 'la fila del diario no sigue al final de su cadena';
  END IF;
END$$
DELIMITER ;

-- The change mark of the sale's parameters: the server moves
-- `configuracion.revision` at every change of the system settings and of any
-- group's row (an inserted settings row starts from the clock in
-- microseconds, so settings written again never take back an earlier mark).
-- It moves too with the runners of the race card (a row added, removed or
-- withdrawn, or moved to another race, day or track) and with the centres'
-- quotas per horse: a booth keeps, with its group's parameters, the race's
-- runners and the horse's quota between its sales, and compares the mark,
-- read under the horse's lock, with the one it kept.
ALTER TABLE `configuracion` ADD COLUMN `revision` BIGINT NOT NULL DEFAULT 0;

CREATE TRIGGER `configuracion_nueva` BEFORE INSERT ON `configuracion` FOR EACH ROW
  SET NEW.revision = CAST(UNIX_TIMESTAMP(NOW(6)) * 1000000 AS SIGNED);
CREATE TRIGGER `configuracion_revisada` BEFORE UPDATE ON `configuracion` FOR EACH ROW
  SET NEW.revision = GREATEST(OLD.revision + 1, CAST(UNIX_TIMESTAMP(NOW(6)) * 1000000 AS SIGNED));
CREATE TRIGGER `grupos_nuevo` AFTER INSERT ON `grupos` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `grupos_revisado` AFTER UPDATE ON `grupos` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `grupos_borrado` AFTER DELETE ON `grupos` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `venta_cupo_ganadores_nuevo` AFTER INSERT ON `venta_cupo_ganadores` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `venta_cupo_ganadores_revisado` AFTER UPDATE ON `venta_cupo_ganadores` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `venta_cupo_ganadores_borrado` AFTER DELETE ON `venta_cupo_ganadores` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `carreras_nueva` AFTER INSERT ON `carreras` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
CREATE TRIGGER `carreras_borrada` AFTER DELETE ON `carreras` FOR EACH ROW
  UPDATE `configuracion` SET revision = revision + 1;
-- Only a change of the runners: the sales' counts and the opening and
-- closing of the pools leave the mark alone.
DELIMITER $$
CREATE TRIGGER `carreras_corredores` AFTER UPDATE ON `carreras` FOR EACH ROW
BEGIN
  IF NOT (NEW.retirado <=> OLD.retirado AND NEW.carrera <=> OLD.carrera AND NEW.fecha <=> OLD.fecha AND
          NEW.id_hipodromo <=> OLD.id_hipodromo AND NEW.nu_caballo <=> OLD.nu_caballo) THEN
    UPDATE `configuracion` SET revision = revision + 1;
  END IF;
END$$
DELIMITER ;
