#!/usr/bin/python3
"""Holds what the program prints against the schemas, and against what no schema can say: the order of keys, that none
is repeated, and that every property is declared.

usage: documents.py PROGRAM DOCS_FOLDER TABLE_FOLDER...
"""
import copy
import json
import os
import pathlib
import subprocess
import sys

try:
    from jsonschema import Draft202012Validator as Validator
except ImportError:
    print("skipped: python3-jsonschema is not installed")
    sys.exit(77)

program, docs = sys.argv[1], pathlib.Path(sys.argv[2])
tables = [table for folder in sys.argv[3:] for table in sorted(pathlib.Path(folder).rglob("*.dmi"))]
faults = []


def printed(*arguments, typed=""):
    environment = {**os.environ, "LC_ALL": "C", "XDG_CONFIG_HOME": "/nonexistent"}
    run = subprocess.run([program, *arguments], env=environment, capture_output=True, input=typed.encode())
    return run.stdout.decode("utf-8")


def without_repeats(members):
    if len(dict(members)) != len(members):
        faults.append(f"a key is repeated: {[key for key, _ in members]}")
    return dict(members)


def parsed(text):
    return json.loads(text, object_pairs_hook=without_repeats)


def schema(name):
    content = parsed((docs / name).read_text())
    Validator.check_schema(content)
    return content, content["$defs"]


def has_order(value, described):
    return list(value) == [key for key in described["properties"] if key in value]


def are_ordered(devices):
    """Whether all keys come in the schema's order, where it has one: properties come as the type has them."""
    for device in devices:
        children = device.get("childBusIds", [])
        measurements = [value for value in device["properties"].values() if isinstance(value, dict)]
        if not (has_order(device, parts["device"])
                and all(has_order(child, parts["childBusId"]) for child in children)
                and all(has_order(measurement, parts["measurement"]) for measurement in measurements)):
            return False
    return True


inventory, parts = schema("inventory.schema.json")
whole = Validator(inventory)
failure = Validator({"$defs": parts, "$ref": "#/$defs/failure"})


def check(what, validator, document, *orders):
    faults.extend(f"{what}: {error.json_path}: {error.message}" for error in validator.iter_errors(document))
    if not all(orders):
        faults.append(f"{what}: keys are not in the schema's order")


described, described_parts = schema("catalogue.schema.json")
catalogue = parsed(printed("--catalogue", "-f", "json"))
check("catalogue", Validator(described), catalogue, has_order(catalogue, described),
      *(has_order(declaration, described_parts["property"]) for declaration in catalogue["properties"]))
declared = {declaration["name"] for declaration in catalogue["properties"]}

count = 0
everything = ["/nonexistent", *tables]
in_one_run = printed("--tables", "-d", "-f", "json", typed="".join(f"{table}\n" for table in everything)).splitlines()
if len(in_one_run) != len(everything):
    faults.append(f"{len(in_one_run)} lines for {len(everything)} tables")
for table, text in zip(everything, in_one_run):
    load = f"LoadTable={table}"
    document = parsed(printed("-s", load, "-f", "json"))
    alone = printed("-s", load, "-d", "-f", "json")
    detailed = parsed(text)
    if "error" in detailed:
        check(f"{table} in a list", failure, detailed, has_order(detailed, parts["failure"]))
    else:
        if text != json.dumps({"source": str(table)})[:-1].replace(": ", ":") + "," + alone.replace("\n", "")[1:]:
            faults.append(f"{table}: in a list it is not what it is alone")
        check(f"{table} with details", whole, detailed, has_order(detailed, inventory),
              has_order(detailed["table"], parts["table"]), are_ordered(detailed["devices"]),
              *(has_order(other, parts["other"]) for other in detailed["others"]),
              *(has_order(fault, parts["fault"]) for fault in detailed["faults"]))
        for device in detailed["devices"]:
            del device["numbers"]
        if {key: detailed[key] for key in document} != document:
            faults.append(f"{table}: details change what is there without them")
    devices = document["devices"]
    # Its devices are those of the document with details, which are checked there.
    check(table, whole, {**document, "devices": []}, has_order(document, inventory),
          has_order(document["module"], parts["module"]), are_ordered(devices))
    if [parsed(text) for text in printed("-s", load, "-f", "ndjson").splitlines()] != devices:
        faults.append(f"{table}: lines and document differ")
    for device in devices:
        faults += [f"{table}: {name} is not declared" for name in device["properties"] if name not in declared]
    if (table == "/nonexistent") != (devices == []):
        faults.append(f"{table}: {len(devices)} devices")
    count += len(devices)

# Each makes a valid document wrong in one place.
REMOVED = object()
MISTAKES = [
    (["generated"], "today"),
    (["module"], REMOVED),
    (["module", "version"], 6.5),
    (["devices", 1, "name"], REMOVED),
    (["devices", 1, "uid"], "SMBIOS:0x00ab"),
    (["devices", 1, "parent"], "SMBIOS"),
    (["devices", 1, "uids"], {}),
    (["devices", 1, "childBusIds"], []),
    (["devices", 0, "childBusIds", 0, "id"], "0x11"),
    (["devices", 1, "properties", "vendor"], "text"),
    (["devices", 1, "properties", "t0_sz"], 16.5),
    (["devices", 1, "properties", "t0_sz"], None),
    (["devices", 1, "properties", "t0_characteristics", 0], 1),
    (["devices", 1, "properties", "smbios2_hdr_len", "unit"], "KILOBYTES"),
    (["devices", 1, "properties", "smbios2_hdr_handle", "text"], "0x0"),
    (["devices", 1, "numbers"], REMOVED),
    (["devices", 1, "numbers", "t0_sz"], 16),
    (["devices", 1, "numbers", "t0_start", "unit"], "TEXT"),
    (["table"], REMOVED),
    (["table", "source"], "memory"),
    (["table", "version"], "three"),
    (["others"], REMOVED),
    (["others", 0, "length"], 3),
    (["others", 0, "handle"], None),
    (["faults"], REMOVED),
    (["faults", 0, "fault"], "unknown"),
    (["faults", 0, "handle"], "0x1"),
]
sample = parsed(printed("-s", f"LoadTable={tables[0]}", "-d", "-f", "json"))
for path, mistake in MISTAKES:
    wrong = copy.deepcopy(sample)
    *road, last = path
    place = wrong
    for key in road:
        place = place[key]
    place[last] = mistake
    if mistake is REMOVED:
        del place[last]
    if whole.is_valid(wrong):
        faults.append(f"the schema accepts {'nothing' if mistake is REMOVED else mistake} at {path}")
if are_ordered([dict(reversed(device.items())) for device in sample["devices"]]):
    faults.append("keys in reverse order are accepted")

if faults:
    sys.exit("\n".join(faults))
print(f"{count} devices in {len(tables)} inventories and {len(declared)} declarations are valid, "
      f"{len(MISTAKES)} mistakes are refused")
