"""Compares the inventory of the emulated machine with that of the sample machine: device by device, in order.

usage: compare_inventories.py LIVE.json SAMPLE.json VERSION

One thing must differ: the emulator writes the entry point itself, so the table's version is VERSION, not the sample's.
The emulator adds no structure of its own where a file gives one of that type, and the sample has all types that it
would make up.
"""
import json
import pathlib
import sys


def devices(path):
    return json.loads(pathlib.Path(path).read_bytes().decode("utf-8"))["devices"]


live, sample, version = devices(sys.argv[1]), devices(sys.argv[2]), sys.argv[3]
differences = []

if len(sample) < 2:
    differences.append("the sample has no structures: nothing was compared")
for device in sample:
    if "smbios2_version" in device["properties"]:
        if device["properties"]["smbios2_version"] == version:
            differences.append("the sample's version is the emulator's: nothing tells the two tables apart")
        device["properties"]["smbios2_version"] = version

live_uids = [device["uid"] for device in live]
sample_uids = [device["uid"] for device in sample]
differences += [f"{uid}: missing in the emulated machine" for uid in sample_uids if uid not in live_uids]
differences += [f"{uid}: only in the emulated machine" for uid in live_uids if uid not in sample_uids]
if not differences and live_uids != sample_uids:
    differences.append("the devices come in another order")

live_of = {device["uid"]: device for device in live}
for expected in sample:
    actual = live_of.get(expected["uid"])
    if actual is None:
        continue
    for key in sorted((expected.keys() | actual.keys()) - {"properties"}):
        if expected.get(key) != actual.get(key):
            differences.append(f"{expected['uid']} {key}: {actual.get(key)!r} instead of {expected.get(key)!r}")
    theirs, ours = expected["properties"], actual["properties"]
    for name in sorted(theirs.keys() | ours.keys()):
        if theirs.get(name) != ours.get(name):
            differences.append(f"{expected['uid']} {name}: {ours.get(name)!r} instead of {theirs.get(name)!r}")
    if theirs == ours and list(theirs) != list(ours):
        differences.append(f"{expected['uid']}: the properties come in another order")

for difference in differences:
    print(difference)
if differences:
    sys.exit(1)
properties = sum(len(device["properties"]) for device in sample)
print(f"{len(sample)} devices with {properties} properties are the sample's, the version is {version}")
