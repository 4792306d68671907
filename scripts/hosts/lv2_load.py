#!/usr/bin/python3
"""Loads the LV2 through the library that hosts use, and prints how long each step takes: to find
it, to read its turtle, to make an instance. scripts/check-hosts runs it in an environment of its
own."""
import ctypes
import time
from ctypes import (CFUNCTYPE, POINTER, Structure, byref, c_char_p, c_double, c_int32, c_uint32,
                    c_void_p)

URI = b"urn:qlm-works:orvantesco"
RATE, BLOCK = 48000.0, 1024


class Feature(Structure):
    _fields_ = [("uri", c_char_p), ("data", c_void_p)]


class Service(Structure):
    """What a host offers for its urid:map and its worker: a handle and one function."""
    _fields_ = [("handle", c_void_p), ("call", c_void_p)]


class Option(Structure):
    _fields_ = [("context", c_int32), ("subject", c_uint32), ("key", c_uint32),
                ("size", c_uint32), ("type", c_uint32), ("value", c_void_p)]


class Descriptor(Structure):
    _fields_ = [("uri", c_char_p), ("instantiate", c_void_p), ("connect", c_void_p),
                ("activate", CFUNCTYPE(None, c_void_p))]


class Instance(Structure):
    _fields_ = [("descriptor", POINTER(Descriptor)), ("handle", c_void_p)]


class Host:
    """The features without which the plug-in does not start."""

    def __init__(self):
        self.ids = {}
        self.map = CFUNCTYPE(c_uint32, c_void_p, c_char_p)(
            lambda _, uri: self.ids.setdefault(uri, len(self.ids) + 1))
        self.schedule = CFUNCTYPE(c_int32, c_void_p, c_uint32, c_void_p)(lambda *_: 0)
        self.block = c_int32(BLOCK)
        self.services = [Service(None, ctypes.cast(call, c_void_p))
                         for call in (self.map, self.schedule)]
        self.options = (Option * 2)(self.option())
        self.offered = [Feature(uri, ctypes.cast(byref(what), c_void_p)) for uri, what in (
            (b"http://lv2plug.in/ns/ext/urid#map", self.services[0]),
            (b"http://lv2plug.in/ns/ext/worker#schedule", self.services[1]),
            (b"http://lv2plug.in/ns/ext/options#options", self.options))]
        self.features = (POINTER(Feature) * 4)(*map(ctypes.pointer, self.offered))

    def option(self):
        key = self.map(None, b"http://lv2plug.in/ns/ext/buf-size#maxBlockLength")
        kind = self.map(None, b"http://lv2plug.in/ns/ext/atom#Int")
        return Option(0, 0, key, 4, kind, ctypes.addressof(self.block))


def library():
    """Functions of lilv that give and take pointers."""
    lilv = ctypes.CDLL("liblilv-0.so.0")
    for name, *takes in (("world_new",), ("world_load_all", c_void_p),
                         ("world_get_all_plugins", c_void_p), ("new_uri", c_void_p, c_char_p),
                         ("plugins_get_by_uri", c_void_p, c_void_p),
                         ("plugin_get_num_ports", c_void_p)):
        function = getattr(lilv, "lilv_" + name)
        function.argtypes, function.restype = takes, c_void_p
    lilv.lilv_plugin_instantiate.argtypes = [c_void_p, c_double, c_void_p]
    lilv.lilv_plugin_instantiate.restype = POINTER(Instance)
    return lilv


def timed(what, step):
    began = time.perf_counter()
    result = step()
    print(f"{what} in {(time.perf_counter() - began) * 1e6:.0f} us")
    if not result:
        raise SystemExit(f"not {what}")
    return result


def find(lilv):
    world = lilv.lilv_world_new()
    lilv.lilv_world_load_all(world)
    return lilv.lilv_plugins_get_by_uri(lilv.lilv_world_get_all_plugins(world),
                                        lilv.lilv_new_uri(world, URI))


def start(lilv, plugin, host):
    instance = lilv.lilv_plugin_instantiate(plugin, RATE, host.features)
    if instance:
        instance[0].descriptor[0].activate(instance[0].handle)
    return instance


def main():
    lilv, host = library(), Host()
    plugin = timed("scanned", lambda: find(lilv))
    timed("read", lambda: lilv.lilv_plugin_get_num_ports(plugin))
    timed("loaded", lambda: start(lilv, plugin, host))


if __name__ == "__main__":
    main()
