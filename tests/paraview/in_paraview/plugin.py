"""Loads the plug-in and makes readers, for the scripts beside this one."""
import argparse

from paraview import simple


def arguments(*names):
    """The command line: the plug-in, what `names` say, of which those that end in "..." may be any number, and --server
    HOST:PORT."""
    parser = argparse.ArgumentParser()
    parser.add_argument("plugin")
    for name in names:
        parser.add_argument(name.removesuffix("..."), nargs="*" if name.endswith("...") else None)
    parser.add_argument("--server")
    return parser.parse_args()


def load(options):
    """Connects to the server, if there is one, and loads the plug-in on both sides."""
    if options.server:
        host, port = options.server.split(":")
        simple.Connect(host, int(port))
        simple.LoadPlugin(options.plugin, remote=True, ns=globals())
    simple.LoadPlugin(options.plugin, remote=False, ns=globals())


def open_dataset(*files):
    return simple._create_func("FLDReader", simple.servermanager.sources)(FileNames=[str(f) for f in files])
