"""Validates the model by its schema: model_schema.py SCHEMA MODEL. Every object of the schema must be closed, so that
no field of the model is without one."""

import json
import sys

import jsonschema


def open_objects(part, path="#"):
    if isinstance(part, dict):
        if part.get("type") == "object" and part.get("additionalProperties") is not False:
            yield path
        for name, value in part.items():
            yield from open_objects(value, path + "/" + name)


schema, model = (json.load(open(path, encoding="utf-8")) for path in sys.argv[1:])
validator = jsonschema.Draft202012Validator
validator.check_schema(schema)
faults = [f"{path} takes any field" for path in open_objects(schema)]
faults += [f"{error.json_path}: {error.message}" for error in validator(schema).iter_errors(model)]
sys.exit("\n".join(faults) or 0)
