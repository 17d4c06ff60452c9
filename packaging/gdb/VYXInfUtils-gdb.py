"""Shows the values of VYXInfUtils in gdb as what they mean.

gdb loads this file with the library: an installed one from its auto-load folder, one that was built from beside the
library, once "add-auto-load-safe-path BUILD-FOLDER" allows it. Property trees, the views into them and errors are shown
where the library has debug information; all other values where the program has.
"""

import gdb
import gdb.printing

UNKNOWN = "the library has no debug information"
KINDS = ("null", "Boolean", "Number", "String", "Array", "Object")


def is_known(kind):
    return bool(kind.strip_typedefs().fields())


def text_of(address, size):
    """UTF-8 bytes; gdb cuts them at "print elements" and reads no more."""
    return address.lazy_string("UTF-8", length=int(size))


def vector_items(vector):
    first, end = vector["_M_impl"]["_M_start"], vector["_M_impl"]["_M_finish"]
    return [first + index for index in range(int(end - first))]


def owned_by(unique_pointer):
    """The pointer in a std::unique_ptr: the first part of the tuple of pointer and deleter."""
    parts = unique_pointer["_M_t"]["_M_t"]
    parts = parts.cast(parts.type.fields()[0].type)
    head = next(field for field in parts.type.fields() if field.name.startswith("std::_Head_base<0"))
    return parts.cast(head.type)["_M_head_impl"]


def counted(count, word):
    return f"{count} {word}" if count == 1 else f"{count} {word}s"


class TextPrinter:
    """KORUnicodeString: short texts stand in the object, its last byte tells."""

    def __init__(self, value):
        self.small, self.large = value["_storage"]["small"], value["_storage"]["large"]

    def to_string(self):
        size = int(self.small["tag"])
        if size >= 0x80:
            return text_of(self.large["text"], self.large["size"])
        letters = self.small["text"]
        if letters.address is not None:
            return text_of(letters.address.cast(gdb.lookup_type("char").pointer()), size)
        return bytes(int(letters[index]) & 0xFF for index in range(size)).decode("utf-8", "backslashreplace")

    def display_hint(self):
        return "string"


class TextViewPrinter(TextPrinter):
    """QB::StringView: holds a text that borrows its bytes."""

    def __init__(self, value):
        super().__init__(value["_text"])


class CharacterPrinter:
    """KORUnicodeChar: values from 0x110000 on are bytes of ill-formed text."""

    def __init__(self, value):
        self.code = int(value["_value"])

    def to_string(self):
        if self.code >= 0x110000:
            return f"byte 0x{self.code - 0x110000:02x}"
        letter = chr(self.code)
        return f"U+{self.code:04X}" + (f" '{letter}'" if letter.isprintable() else "")


class ListPrinter:
    """A list over a vector; positions count from 1, as in the program."""

    def __init__(self, name, items):
        self.name, self.items = name, items

    def to_string(self):
        return f"{self.name} of {counted(len(self.items), 'element')}"

    def children(self):
        return ((f"[{position}]", item.dereference()) for position, item in enumerate(self.items, 1))


def list_over(member):
    return lambda value: ListPrinter(value.type.strip_typedefs().name, vector_items(value[member]))


def list_of_copies(value):
    """KORListVal and the lists derived from it: pointers to copies on the heap."""
    pattern = value.type.strip_typedefs()
    while not pattern.name.startswith("KORListVal<"):
        pattern = pattern.fields()[0].type.strip_typedefs()
    element = pattern.template_argument(0).pointer()
    items = vector_items(value["_elements"]["_pointers"])
    return ListPrinter(value.type.strip_typedefs().name, [item.dereference().cast(element) for item in items])


class BinaryPrinter:
    """QB::Binary and QB::BinarySlice."""

    def __init__(self, value):
        self.data, self.size = value["_data"], int(value["_size"])

    def to_string(self):
        return counted(self.size, "byte")

    def children(self):
        if self.size > 0:
            bytes_type = gdb.lookup_type("char").array(self.size - 1)
            yield "data", self.data.cast(bytes_type.pointer()).dereference()


def array_items(array):
    body = array["_body"]
    if int(body) == 0:
        return []
    first = (body + 1).cast(gdb.lookup_type("json::Value").pointer())
    return [first + index for index in range(int(body["size"]))]


def object_entries(members):
    """The members in key order: runs of slots, each of which points to its entry."""
    body = members["_body"]
    if int(body) == 0:
        return
    table = body["slots"]
    for run in (table["_runs"][index] for index in range(int(table["_runCount"]))):
        for index in range(int(run["size"])):
            yield run["slots"][index]["entry"].dereference()


def object_children(members):
    for index, entry in enumerate(object_entries(members)):
        yield f"[{index}].key", entry["key"]
        yield f"[{index}].value", entry["value"]


class ValuePrinter:
    """json::Value: a tagged union."""

    def __init__(self, value):
        self.value, self.kind = value, KINDS[int(value["_kind"])]

    def to_string(self):
        if self.kind == "Array":
            return f"Array of {len(array_items(self.value['_array']))}"
        if self.kind in ("null", "Object"):
            return self.kind
        return {"Boolean": lambda: str(bool(self.value["_boolean"])).lower(),
                "Number": lambda: repr(float(self.value["_number"])),
                "String": lambda: self.value["_string"].format_string()}[self.kind]()

    def children(self):
        if self.kind == "Object":
            return object_children(self.value["_object"])
        if self.kind == "Array":
            return ((str(index), item.dereference()) for index, item in enumerate(array_items(self.value["_array"])))
        return iter(())

    def display_hint(self):
        return {"Object": "map", "Array": "array"}.get(self.kind)


class ObjectPrinter:
    """json::Object."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "Object"

    def children(self):
        return object_children(self.value)

    def display_hint(self):
        return "map"


class TreePrinter:
    """VYXPropertyTree: owns its root object."""

    def __init__(self, value):
        self.root = owned_by(value["_root"])
        self.is_known = is_known(self.root.type.target())

    def to_string(self):
        if int(self.root) == 0:
            return "VYXPropertyTree without root"
        return "VYXPropertyTree" if self.is_known else f"VYXPropertyTree ({UNKNOWN})"

    def children(self):
        return object_children(self.root.dereference()) if self.is_known and int(self.root) != 0 else iter(())

    def display_hint(self):
        return "map"


class ViewPrinter:
    """VYXPropertyAccess and VYXListAccess: point to a value of a tree."""

    def __init__(self, value):
        self.name, self.designated = value.type.strip_typedefs().name, value["_value"]

    def to_string(self):
        if int(self.designated) == 0:
            return f"{self.name} of nothing"
        return self.name if is_known(self.designated.type.target()) else f"{self.name} ({UNKNOWN})"

    def children(self):
        if int(self.designated) != 0 and is_known(self.designated.type.target()):
            yield "value", self.designated.dereference()


class UriPrinter:
    """VYXInfUri: the components that are set."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "VYXInfUri"

    def children(self):
        for name in ("scheme", "host", "port", "path", "query", "fragment"):
            component = self.value["_" + name]
            if name != "port":
                size = component["_M_string_length"]
                if int(size) > 0:
                    yield name, text_of(component["_M_dataplus"]["_M_p"], size)
            elif int(component) != -1:
                yield name, component


class ErrorPrinter:
    """VYXInfError."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        if not is_known(self.value.type):
            return f"VYXInfError ({UNKNOWN})"
        code = int(self.value["_hresult"]) & 0xFFFFFFFF
        return f"0x{code:08x} {self.value['_message'].format_string()}"


PRINTERS = (
    ("KORUnicodeString", TextPrinter),
    ("QB::StringView", TextViewPrinter),
    ("KORUnicodeChar", CharacterPrinter),
    ("KORListValKORUnicodeString", list_over("_texts")),
    ("KORRawColldouble", list_over("_values")),
    ("KORRawCollPV", list_over("_pointers")),
    ("KORListVal(<.*>|vyx_bool|vyx_int64_t|VYXPropertyTree|VYXInfError)", list_of_copies),
    ("QB::Binary(Slice)?", BinaryPrinter),
    ("json::Value", ValuePrinter),
    ("json::Object", ObjectPrinter),
    ("VYXPropertyTree", TreePrinter),
    ("VYX(Property|List)Access", ViewPrinter),
    ("VYXInfUri", UriPrinter),
    ("VYXInfError", ErrorPrinter),
)


def make_collection():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("VYXInfUtils")
    for pattern, printer in PRINTERS:
        collection.add_printer(pattern, f"^{pattern}$", printer)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), make_collection(), replace=True)
