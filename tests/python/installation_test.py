"""The installed module: all of its files, and nothing of a script that ran before."""

from __future__ import annotations

import os
import subprocess
import sys
import unittest
from pathlib import Path

from support import SOURCE, ListTest


@unittest.skipUnless("CHANNEL_BUILD" in os.environ, "no build folder to install from")
class Installation(ListTest):
    def test_the_component_python_is_the_module(self) -> None:
        command = ["cmake", "--install", os.environ["CHANNEL_BUILD"], "--component", "python", "--prefix", self.folder]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        installed = {file.relative_to(self.folder) for file in self.folder.rglob("*") if file.is_file()}
        sources = [*(SOURCE / "python/channel_list").glob("*.py"), Path("py.typed")]
        self.assertEqual({file.parts[-2:] for file in installed}, {("channel_list", file.name) for file in sources})
        (init,) = self.folder.rglob("__init__.py")
        script = "import channel_list; channel_list.ChannelList().close(); print(channel_list.__file__)"
        environment = {**os.environ, "PYTHONPATH": str(init.parents[1])}
        done = subprocess.run([sys.executable, "-c", script], env=environment, capture_output=True, text=True)
        self.assertEqual((done.stdout, done.stderr), (f"{init}\n", ""))


if __name__ == "__main__":
    unittest.main()
