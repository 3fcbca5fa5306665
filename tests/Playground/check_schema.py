"""Checks what `velko status --json`, `velko list --json` or `velko history --json` has printed:
check_schema.py status|list|history <OUTPUT

It knows only what docs/commands.schema.json uses of the language of schemas."""

import json
import sys
from pathlib import Path

SCHEMA = json.loads((Path(__file__).parents[2] / "docs" / "commands.schema.json").read_text(encoding="utf-8"))
TYPES = {"object": dict, "array": list, "string": str, "integer": int, "boolean": bool}
KNOWN = {"type", "const", "enum", "required", "properties", "additionalProperties", "items", "minimum", "description",
         "$ref"}


def mistakes(value, schema, place):
    if "$ref" in schema:
        schema = SCHEMA["$defs"][schema["$ref"].removeprefix("#/$defs/")]
    assert set(schema) <= KNOWN, set(schema) - KNOWN
    wanted = TYPES[schema["type"]]
    if not isinstance(value, wanted) or (wanted is int and isinstance(value, bool)):
        return [f"{place} is no {schema['type']}: {value}"]
    found = []
    if value != schema.get("const", value) or value not in schema.get("enum", [value]):
        found.append(f"{place} may not be {value}")
    if wanted is int and value < schema.get("minimum", value):
        found.append(f"{place} is too small: {value}")
    if wanted is dict:
        fields = schema["properties"]
        found += [f"{place} lacks {name}" for name in schema["required"] if name not in value]
        found += [f"{place} has an unknown {name}" for name in value if name not in fields]
        for name in value.keys() & fields.keys():
            found += mistakes(value[name], fields[name], f"{place}.{name}")
    if wanted is list:
        for index, each in enumerate(value):
            found += mistakes(each, schema["items"], f"{place}[{index}]")
    return found


wrong = mistakes(json.load(sys.stdin), SCHEMA["$defs"][sys.argv[1]], sys.argv[1])
print("\n".join(wrong), end="")
sys.exit(1 if wrong else 0)
