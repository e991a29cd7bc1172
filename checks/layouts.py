#!/usr/bin/env python3
"""Compares the layouts of the public values with the reviewed list, checks/layouts.txt: the size of each class, where its
members are, which slot each virtual function has, and the numbers of enumerators. A program that was compiled against the
headers relies on them.

Usage: layouts.py [--accept], from the root
"""
import difflib
import os
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

LIST = pathlib.Path("checks/layouts.txt")
SOURCE = "#include <Lum/Lum.h>\n#include <Lum/lum.h>\n"


def described(folder):
    """What abidw says of all types of the headers, on the machine whose list is reviewed."""
    source = os.path.join(folder, "types.cpp")
    pathlib.Path(source).write_text(SOURCE, encoding="utf-8")
    subprocess.run(["g++", "-std=c++20", "-g", "-fno-eliminate-unused-debug-types", "-femit-class-debug-always", "-Iinclude", "-c",
                    source, "-o", source + ".o"], check=True)
    text = subprocess.run(["abidw", "--load-all-types", source + ".o"], check=True, stdout=subprocess.PIPE).stdout
    return xml.fromstring(text)


def layouts(tree):
    types = {node.get("id"): node for node in tree.iter() if node.get("id")}

    def name_of(type_id):
        node = types.get(type_id)
        if node is None:
            return "?"
        inner = name_of(node.get("type-id")) if node.get("type-id") else ""
        match node.tag:
            case "pointer-type-def":
                return inner + "*"
            case "reference-type-def":
                return inner + ("&" if node.get("kind") == "lvalue" else "&&")
            case "qualified-type-def":
                return ("const " if node.get("const") == "yes" else "") + inner
            case "array-type-def":
                return f"{inner}[{node.find('subrange').get('length')}]"
            case "function-type":
                return "function"
        return node.get("name")

    rows = {}

    def visit(node, scope):
        for child in node:
            name = scope + child.get("name", "") if child.tag in ("namespace-decl", "class-decl", "union-decl") else scope
            if (child.tag in ("class-decl", "union-decl") and child.get("size-in-bits") and child.get("is-anonymous") != "yes"
                    and "include/Lum/" in child.get("filepath", "")):
                lines = [f"{name} {int(child.get('size-in-bits')) // 8}"]
                for base in child.findall("base-class"):
                    lines.append(f"  {int(base.get('layout-offset-in-bits', 0)) // 8:+d} base {name_of(base.get('type-id'))}"
                                 + (" virtual" if base.get("is-virtual") == "yes" else ""))
                for member in child.findall("data-member"):
                    variable = member.find("var-decl")
                    if member.get("static") != "yes" and variable is not None:
                        lines.append(f"  {int(member.get('layout-offset-in-bits')) // 8:+d} {variable.get('name')} {name_of(variable.get('type-id'))}")
                slots = set()
                for member in child.findall("member-function"):
                    if member.get("vtable-offset") is not None:
                        function = member.find("function-decl")
                        arguments = ", ".join(name_of(argument.get("type-id")) for argument in function.findall("parameter")[1:])
                        slots.add((int(member.get("vtable-offset")), f"{function.get('name')}({arguments})"))
                lines += [f"  slot {slot} {function}" for slot, function in sorted(slots)]
                rows[name] = lines
            if child.tag == "enum-decl" and "include/Lum/" in child.get("filepath", ""):
                values = [f"  {value.get('name')} = {value.get('value')}" for value in child.findall("enumerator")]
                rows[scope + child.get("name") + values[0]] = [f"enum {scope}{child.get('name')}"] + values
            visit(child, name + "::" if name != scope else scope)

    visit(tree, "")
    return [line for name in sorted(rows) for line in rows[name]]


def main():
    with tempfile.TemporaryDirectory() as folder:
        found = layouts(described(folder))
    if not any(line.startswith("Lum::URI ") for line in found):
        sys.exit("the types of the headers are not found")
    if "--accept" in sys.argv:
        LIST.write_text("\n".join(found) + "\n", encoding="utf-8")
    difference = list(difflib.unified_diff(LIST.read_text(encoding="utf-8").splitlines(), found, str(LIST), "the headers", lineterm=""))
    print("\n".join(difference))
    sys.exit(bool(difference))


main()
