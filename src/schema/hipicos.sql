-- Schema of the betting-centre server: the table of betting centres.
CREATE TABLE `centroshipicos` (
  `id_centro` INT NOT NULL AUTO_INCREMENT,
  `ch` VARCHAR(45) NOT NULL DEFAULT '',
  `contacto` VARCHAR(100) NOT NULL DEFAULT '',
  `telefono` VARCHAR(45) NOT NULL DEFAULT '',
  `grupo` VARCHAR(10) NOT NULL DEFAULT '',
  `fecha_ingreso` VARCHAR(10) NOT NULL DEFAULT '',
  `subastas` INT NOT NULL DEFAULT 0,
  `ganadores` INT NOT NULL DEFAULT 0,
  `tablafija` INT NOT NULL DEFAULT 0,
  `macuare` INT NOT NULL DEFAULT 0,
  `subgrupo` VARCHAR(10) NOT NULL DEFAULT 'N/A',
  `estatus` VARCHAR(10) NOT NULL DEFAULT 'Activo',
  PRIMARY KEY (`id_centro`),
  KEY `ix_centroshipicos_grupo` (`grupo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
