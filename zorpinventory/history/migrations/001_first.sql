-- The history's first schema. Times are UTC and sort as texts: 2026-11-01T08:30:00Z.

CREATE TABLE machine (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE -- what the machine is known by: maker, product and serial number, or as the user said
) STRICT;

CREATE TABLE device (
    id INTEGER PRIMARY KEY,
    hash INTEGER NOT NULL, -- XXH3 of the text, 64 bits
    text TEXT NOT NULL     -- the device as the document has it, JSON without blanks; equal ones are kept once
) STRICT;
CREATE INDEX device_by_hash ON device (hash);

CREATE TABLE document (
    id INTEGER PRIMARY KEY,
    hash INTEGER NOT NULL, -- XXH3 of the whole document as it is put together, 64 bits
    before TEXT NOT NULL,  -- the document up to its first device, JSON without blanks
    devices TEXT NOT NULL, -- the ids of its devices in order, a JSON array; commas stand between devices
    after TEXT NOT NULL    -- the document behind its last device
) STRICT;
CREATE INDEX document_by_hash ON document (hash);

CREATE TABLE record (
    machine INTEGER NOT NULL REFERENCES machine (id),
    number INTEGER NOT NULL, -- N of @N, from 1 in each machine, in the order of recording
    taken TEXT NOT NULL,     -- when the machine was as the document says
    source TEXT,             -- the file that it was read from; null: the machine itself
    document INTEGER NOT NULL REFERENCES document (id),
    PRIMARY KEY (machine, number)
) STRICT, WITHOUT ROWID;
CREATE INDEX record_by_time ON record (machine, taken, number);
CREATE INDEX record_by_document ON record (document);

CREATE TABLE part (
    serial TEXT NOT NULL COLLATE NOCASE, -- real ones that no other part of the document has
    document INTEGER NOT NULL REFERENCES document (id),
    type INTEGER NOT NULL, -- of the structure: 17 for memory devices
    place TEXT,            -- "DIMM A1"; null where nothing tells it
    PRIMARY KEY (serial, document, type)
) STRICT, WITHOUT ROWID;

CREATE VIEW machines AS
SELECT machine.name AS machine, count(*) AS records, min(taken) AS first, max(taken) AS last
FROM machine JOIN record ON record.machine = machine.id
GROUP BY machine.id;

CREATE VIEW records AS
SELECT machine.name AS machine, number, taken, source, document
FROM record JOIN machine ON machine.id = record.machine;

-- One row for each device of each record; "position" counts from 0 in the document.
CREATE VIEW devices AS
SELECT records.machine, number, taken, place.key AS position,
       json_extract(device.text, '$.uid') AS uid,
       json_extract(device.text, '$.name') AS name,
       json_extract(device.text, '$.properties.smbios2_hdr_type') AS type,
       device.text AS json
FROM records
JOIN document ON document.id = records.document
JOIN json_each(document.devices) AS place
JOIN device ON device.id = place.value;

-- One row for each property of each device of each record. Lists and measurements are JSON; "amount", "unit" and "code"
-- are what the text was made from, null where nothing is.
CREATE VIEW properties AS
SELECT machine, number, taken, position, uid, devices.type, property.key AS property,
       property.value AS value,
       json_extract(devices.json, '$.numbers.' || property.key || '.value') AS amount,
       json_extract(devices.json, '$.numbers.' || property.key || '.unit') AS unit,
       json_extract(devices.json, '$.numbers.' || property.key || '.code') AS code
FROM devices JOIN json_each(devices.json, '$.properties') AS property;
