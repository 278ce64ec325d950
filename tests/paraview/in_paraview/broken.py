"""broken.py PLUGIN FOLDER SCRATCH: opens broken files through ParaView; each failure is one of the reader, none ends the
program, and a sound dataset opens afterwards. FOLDER holds the broken files, SCRATCH a sound sample."""
import glob
import os
import shutil
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plugin
from paraview import simple

options = plugin.arguments("folder", "scratch")
plugin.load(options)
opened = failed = 0
for path in sorted(glob.glob(os.path.join(options.folder, "*")))[::6]:
    copy = os.path.join(options.scratch, "broken.fld")
    shutil.copyfile(path, copy)
    reader = plugin.open_dataset(copy)
    reader.UpdatePipelineInformation()
    simple.UpdatePipeline(proxy=reader)
    if len(reader.Parts.Available):
        opened += 1
    else:
        failed += 1
    simple.Delete(reader)
    os.remove(copy)
sound = plugin.open_dataset(os.path.join(options.scratch, "channel", "channel.fld"))
simple.UpdatePipeline(proxy=sound)
if sound.GetDataInformation().GetNumberOfCells() == 0:
    sys.exit("the sound dataset did not open")
if opened == 0 or failed == 0:
    sys.exit(f"{opened} opened, {failed} failed: not what the files are there for")
print(opened, "opened,", failed, "failed")
