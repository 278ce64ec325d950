"""broken.py PLUGIN FOLDER SCRATCH [STRIDE]: opens broken files, every so many of FOLDER, through ParaView. Each failure is one
of the reader, which says why, none ends the program, and a sound dataset opens afterwards. SCRATCH holds a sound sample."""
import glob
import os
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plugin
from paraview import simple
from vtkmodules.vtkCommonCore import vtkOutputWindow

errors = []


def note_error(window, event, text):
    errors.append(text)


note_error.CallDataType = "string0"
vtkOutputWindow.GetInstance().AddObserver("ErrorEvent", note_error)


def opens(path):
    """Whether the dataset opens. One that does not has to be an error."""
    errors.clear()
    reader = plugin.open_dataset(path)
    reader.UpdatePipelineInformation()
    simple.UpdatePipeline(proxy=reader)
    is_open = len(reader.Parts.Available) > 0
    simple.Delete(reader)
    if not is_open and not any("cannot open " + path in text for text in errors):
        sys.exit(f"it did not open and nothing says why: {errors}")
    return is_open


options = plugin.arguments("folder", "scratch", "stride...")
plugin.load(options)
opened = failed = 0
with tempfile.TemporaryDirectory(dir=options.scratch) as folder:
    for path in sorted(glob.glob(os.path.join(options.folder, "*")))[:: int((options.stride or [6])[0])]:
        # The reader wants its extension.
        copy = os.path.join(folder, "broken.fld")
        shutil.copyfile(path, copy)
        print(os.path.basename(path))
        if opens(copy):
            opened += 1
        else:
            failed += 1
sound = plugin.open_dataset(os.path.join(options.scratch, "channel", "channel.fld"))
simple.UpdatePipeline(proxy=sound)
if sound.GetDataInformation().GetNumberOfCells() == 0:
    sys.exit("the sound dataset did not open")
if opened == 0 or failed == 0:
    sys.exit(f"{opened} opened, {failed} failed: not what the files are there for")
print(opened, "opened,", failed, "failed")
