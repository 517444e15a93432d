#!/usr/bin/env python3
"""Describes the layout of the public types, a fact a line: sizes and bases, the place of every
member, the slots of virtual functions, enumerators with their values.

  packaging/abi/describe.py ABIXML

ABIXML is what abidw makes of public_types.cpp. Of private members the place counts, not the
type.
"""
import re
import sys
import xml.etree.ElementTree as tree

OURS = re.compile(r'(JQ\w+|stitchflags|_tagJQIMG|jqstitching::WorkspaceHandle)')
SCOPES = ('namespace-decl', 'class-decl', 'union-decl')


class Interface:
    def __init__(self, path):
        self.elements, self.names, self.lines = {}, {}, set()
        self.root = tree.parse(path).getroot()
        self.collect(self.root, '')

    def collect(self, element, scope):
        name = scope + (element.get('name') or '')
        if element.get('id'):
            self.elements[element.get('id')] = element
            self.names[element.get('id')] = name
        inner = name + '::' if element.tag in SCOPES else scope
        for child in element:
            self.collect(child, inner)

    def type_name(self, key):
        element = self.elements[key]
        target = element.get('type-id')
        if element.tag == 'pointer-type-def':
            return self.type_name(target) + '*'
        if element.tag == 'reference-type-def':
            return self.type_name(target) + ('&' if element.get('kind') == 'lvalue' else '&&')
        if element.tag == 'qualified-type-def':
            return ('const ' if element.get('const') else '') + self.type_name(target)
        if element.tag == 'array-type-def':
            lengths = ''.join(f'[{part.get("length")}]' for part in element.iter('subrange'))
            return self.type_name(target) + lengths
        return self.names[key]

    def describe(self):
        for key, element in self.elements.items():
            if not OURS.fullmatch(self.names[key]) or element.get('is-declaration-only'):
                continue
            if element.tag == 'class-decl':
                self.describe_class(self.names[key], element)
            elif element.tag == 'enum-decl':
                for value in element.iter('enumerator'):
                    self.lines.add(f'value {self.names[key]}::{value.get("name")} = {value.get("value")}')
        return self.lines

    def describe_class(self, name, element):
        self.lines.add(f'size {name}: {element.get("size-in-bits")} bits')
        for base in element.findall('base-class'):
            self.lines.add(f'base {name}: {self.type_name(base.get("type-id"))} at '
                           f'{base.get("layout-offset-in-bits")}')
        for member in element.findall('data-member'):
            place, declared = member.get('layout-offset-in-bits'), member.find('var-decl')
            if place is None:
                continue  # a static one has no place
            what = 'private' if member.get('access') == 'private' else self.type_name(declared.get('type-id'))
            self.lines.add(f'member {name}::{declared.get("name")} at {place}: {what}')
        for member in element.findall('member-function'):
            slot, function = member.get('vtable-offset'), member.find('function-decl')
            if slot not in (None, '-1') and function is not None:  # -1: the destructor
                self.lines.add(f'virtual {name} slot {slot}: {function.get("mangled-name") or function.get("name")}')


if __name__ == '__main__':
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    print('\n'.join(sorted(Interface(sys.argv[1]).describe())))
