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

-- The race card kept on the betting-centre server, from which the race-card
-- screen copies a day's card into the central carreras table (one row per
-- horse of a race of a track on a date, the columns the copy takes).
CREATE TABLE `carreras` (
  `id_carrera` INT NOT NULL AUTO_INCREMENT,
  `fecha` VARCHAR(10) NOT NULL DEFAULT '',
  `carrera` INT NOT NULL DEFAULT 0,
  `id_hipodromo` INT NOT NULL DEFAULT 0,
  `caballo` VARCHAR(100) NOT NULL DEFAULT '',
  `nu_caballo` INT NOT NULL DEFAULT 0,
  `retirado` INT NOT NULL DEFAULT 0,
  `favorito` INT NOT NULL DEFAULT 0,
  PRIMARY KEY (`id_carrera`),
  KEY `ix_carreras_fecha` (`fecha`, `carrera`, `id_hipodromo`)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
