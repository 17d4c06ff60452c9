"""What makes the texts of different JSON libraries comparable."""

import json


def without_nulls(pairs):
    """An object's members: the last of equal keys, and none of null, which the property tree does not store."""
    members = {}
    for key, value in pairs:
        if value is not None:
            members[key] = value
    return members


def exact(number):
    """Texts of one number differ from library to library; the number must not, to the last bit."""
    return float(number).hex()


def normal_form(result):
    """A result in a form that is the same for libraries that did the same; texts that are no JSON stay as they are."""
    try:
        # Not strict: the property tree's writer leaves some control characters unescaped, by its rules.
        value = json.loads(result, strict=False, object_pairs_hook=without_nulls, parse_int=exact,
                           parse_float=exact)
    except ValueError:
        return result
    return json.dumps(value, sort_keys=True)
