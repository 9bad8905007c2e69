-- A history as the first version of the schema has it: a machine, and one memory module taken out of it.
PRAGMA application_id = 1517253232;
PRAGMA user_version = 1;
PRAGMA foreign_keys=OFF;
BEGIN TRANSACTION;
CREATE TABLE machine (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE -- what the machine is known by: maker, product and serial number, or as the user said
) STRICT;
INSERT INTO machine VALUES(1,'Halvard HI-0042-7719');
CREATE TABLE device (
    id INTEGER PRIMARY KEY,
    hash INTEGER NOT NULL, -- XXH3 of the text, 64 bits
    text TEXT NOT NULL     -- the device as the document has it, JSON without blanks; equal ones are kept once
) STRICT;
INSERT INTO device VALUES(1,4062667150177207825,'{"uid":"SMBIOS","name":"SMBIOS","identifier":"SMBIOS","description":"SMBIOS","capabilities":["SMBIOS"],"childBusIds":[{"bus":"SMBIOS","id":null}],"properties":{"__smbios2_hdr_handle":{"value":65535,"unit":"HEXADECIMAL16","text":"0xFFFF"},"smbios2_version":"3.0.0"}}');
INSERT INTO device VALUES(2,8476821387610157218,'{"uid":"SMBIOS:0x0010","name":"BIOS","identifier":"BIOS:0","description":"BIOS:0","capabilities":["SMBIOS_Struct"],"uids":{"2":"SMBIOS:TYPE:0"},"properties":{"smbios2_hdr_type":0,"smbios2_hdr_len":{"value":24,"unit":"BYTES","text":"24 B"},"smbios2_hdr_handle":{"value":16,"unit":"HEXADECIMAL16","text":"0x0010"},"t0_vendor":"Zorp Firmware Works","t0_ver":"1.2","t0_date":"11/04/2019","t0_start":"0x0000","t0_sz":"64 KB","t0_characteristics":[],"t0_version":"0.0","t0_fwversion":"0.0"}}');
INSERT INTO device VALUES(3,-1890294587154165484,'{"uid":"SMBIOS:0x0011","name":"System","identifier":"System:0","description":"System:0","capabilities":["SMBIOS_Struct"],"uids":{"2":"SMBIOS:TYPE:1"},"properties":{"smbios2_hdr_type":1,"smbios2_hdr_len":{"value":27,"unit":"BYTES","text":"27 B"},"smbios2_hdr_handle":{"value":17,"unit":"HEXADECIMAL16","text":"0x0011"},"t1_manufacturer":"Halvard","t1_product":"Kvitnes","t1_serial":"HI-0042-7719","t1_uuid":"33-46-30-43-31-41-37-37-39-39-42-32-00-00-00-00","t1_wakeup":"Reserved"}}');
INSERT INTO device VALUES(4,-2228396793812044162,'{"uid":"SMBIOS:0x0012","name":"Base Board","identifier":"Base Board:0","description":"Base Board:0","capabilities":["SMBIOS_Struct"],"uids":{"2":"SMBIOS:TYPE:2"},"properties":{"smbios2_hdr_type":2,"smbios2_hdr_len":{"value":15,"unit":"BYTES","text":"15 B"},"smbios2_hdr_handle":{"value":18,"unit":"HEXADECIMAL16","text":"0x0012"},"t2_manufacturer":"Halvard","t2_product":"KD2","t2_serial":"HI-MB-118204","t2_features":["The board is a hosting board (for example, a motherboard)","The board requires at least one daughter board or auxiliary card to function properly","The board is removable","The board is replaceable","The board is hot swappable"],"t2_type_int":0,"t2_type":"Out of range","smbios2_parent":{"value":19,"unit":"HEXADECIMAL16","text":"0x0013"},"t2_members":[]}}');
INSERT INTO device VALUES(5,3065522310039743960,'{"uid":"SMBIOS:0x0013","name":"Enclosure","identifier":"Enclosure:0","description":"Enclosure:0","capabilities":["SMBIOS_Struct","Chassis"],"properties":{"smbios2_hdr_type":3,"smbios2_hdr_len":{"value":21,"unit":"BYTES","text":"21 B"},"smbios2_hdr_handle":{"value":19,"unit":"HEXADECIMAL16","text":"0x0013"},"t3_manufacturer":"Halvard","t3_type_msk1_srt7":"Lock is not present or unknown","ChassisType":"Desktop","t3_type_msk7_srt0":"Out of range","t3_serial":"HI-CH-7719","t3_boot_state":"Safe","t3_ps_state":"Out of range","t3_therm_state":"Out of range","t3_sec_status":"Out of range","t3_oem_defined":"0x0000","t3_height":"UNKNOWN","t3_power_cords":"UNKNOWN"}}');
INSERT INTO device VALUES(6,-6638235970829729995,'{"uid":"SMBIOS:0x0014","name":"Processor","identifier":"Processor:0","description":"Processor:0","capabilities":["SMBIOS_Struct"],"childBusIds":[{"bus":"SMBIOS","id":"0x0015"}],"properties":{"smbios2_hdr_type":4,"smbios2_hdr_len":{"value":48,"unit":"BYTES","text":"48 B"},"smbios2_hdr_handle":{"value":20,"unit":"HEXADECIMAL16","text":"0x0014"},"t4_socket":"CPU0","t4_type":"Out of range","t4_family":"Out of range","t4_ver":"Norn N9","t4_voltage":"","t4_ext_clock":"0 Hz","t4_max_speed":"0 Hz","t4_cur_speed":"0 Hz","t4_status_msk1_srt6":"CPU Socket Populated","t4_status_internal":65,"t4_status_msk3_srt0":"CPU Enabled","t4_upgrade":"Out of range","t4_core_cnt":"UNKNOWN","t4_core_enabled":"UNKNOWN","t4_thread_cnt":"UNKNOWN","t4_characteristics":[]}}');
INSERT INTO device VALUES(7,-5585492815887281040,'{"uid":"SMBIOS:Processors","name":"Processors","identifier":"SMBIOS:Processors","description":"Processors","capabilities":["Other"],"childBusIds":[{"bus":"SMBIOS","id":"0x0014"}],"properties":{}}');
INSERT INTO device VALUES(8,628129160398437632,'{"uid":"SMBIOS:0x0015","name":"L1 Cache","identifier":"L1 Cache","description":"L1 Cache","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":7,"smbios2_hdr_len":{"value":19,"unit":"BYTES","text":"19 B"},"smbios2_hdr_handle":{"value":21,"unit":"HEXADECIMAL16","text":"0x0015"},"t7_socket_designation":"L1","t7_cache_cfg_msk2_srt8":"Write Back","t7_cache_cfg_msk1_srt7":"Enabled","t7_cache_cfg_msk2_srt5":"Internal","t7_cache_cfg_msk1_srt3":"Not Socketed","t7_cache_cfg_msk3_srt0":"Level 1","t7_max_cache_sz":"0 B","t7_installed_sz":"64 KB","t7_supported_sram":[],"t7_current_sram":[],"t7_speed":"UNKNOWN","t7_type":"Out of range","t7_error_correction":"Out of range","t7_associativity":"Out of range"}}');
INSERT INTO device VALUES(9,126980039429969959,'{"uid":"SMBIOS:0x0016","name":"Memory Array","identifier":"Memory Array:0","description":"Memory Array:0","capabilities":["SMBIOS_Struct"],"childBusIds":[{"bus":"SMBIOS","id":"0x0000"}],"properties":{"smbios2_hdr_type":16,"smbios2_hdr_len":{"value":23,"unit":"BYTES","text":"23 B"},"smbios2_hdr_handle":{"value":22,"unit":"HEXADECIMAL16","text":"0x0016"},"t16_location":"Out of range","t16_use":"System memory","t16_err_correct":"Out of range","t16_max_sz":"128 GB","t16_error_handle":"0x0000","t16_num":2}}');
INSERT INTO device VALUES(10,-4359932914794436069,'{"uid":"SMBIOS:0x0018","name":"Memory Device","identifier":"Memory Device:0","description":"Memory Device:0","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":17,"smbios2_hdr_len":{"value":40,"unit":"BYTES","text":"40 B"},"smbios2_hdr_handle":{"value":24,"unit":"HEXADECIMAL16","text":"0x0018"},"t17_physical_handle":"0x0016","t17_err_info_handle":"0xFFFE","t17_socket_populated":true,"t17_total_width":"0 bits","t17_data_width":"0 bits","t17_sz":"16 GB","t17_form_factor":"Out of range","t17_device_set":0,"t17_locator":"A1","t17_mem_type":"DDR4","t17_speed":"3.2 GHz","t17_manufacturer":"Tindrel","t17_serial":"5E0071C4","t17_part_num":"TM16R4","t17_config_mem_clock_speed":"0 Hz","t17_min_voltage":"UNKNOWN","t17_max_voltage":"UNKNOWN","t17_conf_voltage":"UNKNOWN","smbios2_parent":{"value":22,"unit":"HEXADECIMAL16","text":"0x0016"}}}');
INSERT INTO device VALUES(11,-7898197612404749223,'{"uid":"SMBIOS:0x0019","name":"Memory Device","identifier":"Memory Device:1","description":"Memory Device:1","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":17,"smbios2_hdr_len":{"value":40,"unit":"BYTES","text":"40 B"},"smbios2_hdr_handle":{"value":25,"unit":"HEXADECIMAL16","text":"0x0019"},"t17_physical_handle":"0x0016","t17_err_info_handle":"0xFFFE","t17_socket_populated":true,"t17_total_width":"0 bits","t17_data_width":"0 bits","t17_sz":"16 GB","t17_form_factor":"Out of range","t17_device_set":0,"t17_locator":"A2","t17_mem_type":"DDR4","t17_speed":"3.2 GHz","t17_manufacturer":"Tindrel","t17_serial":"5E0082D1","t17_part_num":"TM16R4","t17_config_mem_clock_speed":"0 Hz","t17_min_voltage":"UNKNOWN","t17_max_voltage":"UNKNOWN","t17_conf_voltage":"UNKNOWN","smbios2_parent":{"value":22,"unit":"HEXADECIMAL16","text":"0x0016"}}}');
INSERT INTO device VALUES(12,3075463818354683399,'{"uid":"SMBIOS:0x0017","name":"Memory Array Mapped Address","identifier":"Memory Array Mapped Address:0","description":"Memory Array Mapped Address:0","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":19,"smbios2_hdr_len":{"value":15,"unit":"BYTES","text":"15 B"},"smbios2_hdr_handle":{"value":23,"unit":"HEXADECIMAL16","text":"0x0017"},"t19_start":"0x00000000","t19_end":"0x01FFFFFF","t19_array_handle":"0x0016","smbios2_parent":{"value":22,"unit":"HEXADECIMAL16","text":"0x0016"},"t19_partition_width":0}}');
INSERT INTO device VALUES(13,3928936943752766755,'{"uid":"SMBIOS:0x001A","name":"Battery","identifier":"Battery:0","description":"Battery:0","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":22,"smbios2_hdr_len":{"value":26,"unit":"BYTES","text":"26 B"},"smbios2_hdr_handle":{"value":26,"unit":"HEXADECIMAL16","text":"0x001A"},"t22_location":"Rear","t22_serial":"SC-77120","t22_name":"Cell 4","t22_chemistry":"Out of range","t22_capacity":"UNKNOWN","t22_voltage":"UNKNOWN","t22_max_err":"0%","t22_sbds_serial":"00-00","t22_oem_flags":"0x00000000"}}');
INSERT INTO device VALUES(14,-2883704785452320841,'{"uid":"SMBIOS:0x001B","name":"Boot Information","identifier":"Boot Information:0","description":"Boot Information:0","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":32,"smbios2_hdr_len":{"value":11,"unit":"BYTES","text":"11 B"},"smbios2_hdr_handle":{"value":27,"unit":"HEXADECIMAL16","text":"0x001B"},"t32_boot_status":"No errors detected"}}');
INSERT INTO device VALUES(15,707511707263756785,'{"uid":"SMBIOS:0x0019","name":"Memory Device","identifier":"Memory Device:1","description":"Memory Device:1","capabilities":["SMBIOS_Struct"],"properties":{"smbios2_hdr_type":17,"smbios2_hdr_len":{"value":40,"unit":"BYTES","text":"40 B"},"smbios2_hdr_handle":{"value":25,"unit":"HEXADECIMAL16","text":"0x0019"},"t17_physical_handle":"0x0016","t17_err_info_handle":"0xFFFE","t17_socket_populated":false,"t17_total_width":"0 bits","t17_data_width":"0 bits","t17_sz":"Not Installed","t17_form_factor":"Out of range","t17_device_set":0,"t17_locator":"A2","t17_mem_type":"Out of range","t17_speed":"0 Hz","t17_config_mem_clock_speed":"0 Hz","t17_min_voltage":"UNKNOWN","t17_max_voltage":"UNKNOWN","t17_conf_voltage":"UNKNOWN","smbios2_parent":{"value":22,"unit":"HEXADECIMAL16","text":"0x0016"}}}');
CREATE TABLE document (
    id INTEGER PRIMARY KEY,
    hash INTEGER NOT NULL, -- XXH3 of the whole document as it is put together, 64 bits
    before TEXT NOT NULL,  -- the document up to its first device, JSON without blanks
    devices TEXT NOT NULL, -- the ids of its devices in order, a JSON array; commas stand between devices
    after TEXT NOT NULL    -- the document behind its last device
) STRICT;
INSERT INTO document VALUES(1,-3468940407171600012,'{"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2","version":"0.0","build":"","capabilities":[]},"devices":[','[1,2,3,4,5,6,7,8,9,10,11,12,13,14]',']}');
INSERT INTO document VALUES(2,8007116135621474599,'{"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2","version":"0.0","build":"","capabilities":[]},"devices":[','[1,2,3,4,5,6,7,8,9,10,15,12,13,14]',']}');
CREATE TABLE record (
    machine INTEGER NOT NULL REFERENCES machine (id),
    number INTEGER NOT NULL, -- N of @N, from 1 in each machine, in the order of recording
    taken TEXT NOT NULL,     -- when the machine was as the document says
    source TEXT,             -- the file that it was read from; null: the machine itself
    document INTEGER NOT NULL REFERENCES document (id),
    PRIMARY KEY (machine, number)
) STRICT, WITHOUT ROWID;
INSERT INTO record VALUES(1,1,'2026-10-01T08:30:00Z',NULL,1);
INSERT INTO record VALUES(1,2,'2026-10-02T08:30:00Z',NULL,2);
CREATE TABLE part (
    serial TEXT NOT NULL COLLATE NOCASE, -- real ones that no other part of the document has
    document INTEGER NOT NULL REFERENCES document (id),
    type INTEGER NOT NULL, -- of the structure: 17 for memory devices
    place TEXT,            -- "DIMM A1"; null where nothing tells it
    PRIMARY KEY (serial, document, type)
) STRICT, WITHOUT ROWID;
INSERT INTO part VALUES('5E0071C4',1,17,'A1');
INSERT INTO part VALUES('5E0071C4',2,17,'A1');
INSERT INTO part VALUES('5E0082D1',1,17,'A2');
INSERT INTO part VALUES('HI-0042-7719',1,1,NULL);
INSERT INTO part VALUES('HI-0042-7719',2,1,NULL);
INSERT INTO part VALUES('HI-CH-7719',1,3,NULL);
INSERT INTO part VALUES('HI-CH-7719',2,3,NULL);
INSERT INTO part VALUES('HI-MB-118204',1,2,NULL);
INSERT INTO part VALUES('HI-MB-118204',2,2,NULL);
INSERT INTO part VALUES('SC-77120',1,22,'Rear');
INSERT INTO part VALUES('SC-77120',2,22,'Rear');
CREATE INDEX device_by_hash ON device (hash);
CREATE INDEX document_by_hash ON document (hash);
CREATE INDEX record_by_time ON record (machine, taken, number);
CREATE INDEX record_by_document ON record (document);
CREATE VIEW machines AS
SELECT machine.name AS machine, count(*) AS records, min(taken) AS first, max(taken) AS last
FROM machine JOIN record ON record.machine = machine.id
GROUP BY machine.id;
CREATE VIEW records AS
SELECT machine.name AS machine, number, taken, source, document
FROM record JOIN machine ON machine.id = record.machine;
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
CREATE VIEW properties AS
SELECT machine, number, taken, position, uid, devices.type, property.key AS property,
       property.value AS value,
       json_extract(devices.json, '$.numbers.' || property.key || '.value') AS amount,
       json_extract(devices.json, '$.numbers.' || property.key || '.unit') AS unit,
       json_extract(devices.json, '$.numbers.' || property.key || '.code') AS code
FROM devices JOIN json_each(devices.json, '$.properties') AS property;
COMMIT;
