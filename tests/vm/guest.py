"""Boots the test guest: an unmodified kernel in an emulator, with the hardware that a scenario asks for.

The guest's clock counts executed instructions and jumps over idle times: what a scenario measures in the guest does
not depend on how busy this machine is, and waiting costs nothing.
"""

import dataclasses
import io
import json
import os
import pathlib
import shutil
import subprocess
import tarfile
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
EMULATOR = "qemu-system-x86_64"
# 2 ns an instruction: slower than any machine of today, so that limits of time that hold here hold there.
CLOCK = "shift=1,sleep=off"
KERNEL_ARGUMENTS = "console=ttyS0 quiet panic=-1 tsc=reliable random.trust_cpu=on rdinit=/init"
LONGEST_RUN = 240  # seconds: some ten times what a scenario takes on an idle machine


# The drives that are simulated inside the guest.
DRIVES = ("ata-drive", "nvme-drive")


class Unavailable(Exception):
    """What is missing on this machine for booting a guest."""


@dataclasses.dataclass
class Machine:
    """The hardware of a guest."""

    # A Mac whose controller has the keys of this file in keys/.
    keys: str | None = None
    has_thermal_zone: bool = False
    has_nvme: bool = False
    # Can be suspended; it boots a little more slowly.
    can_sleep: bool = False


@dataclasses.dataclass
class Result:
    """What the guest's script left in /out."""

    files: dict[str, str]

    def text(self, name: str) -> str:
        if name not in self.files:
            raise KeyError(f"the guest left no {name}")
        return self.files[name]

    def json(self, name: str):
        return json.loads(self.text(name))

    def number(self, name: str) -> float:
        return float(self.text(name))

    def counts(self, name: str) -> dict[str, int]:
        """What a drive had counted: "smart 3 wakes 0"."""
        words = self.text(name).split()
        return {word: int(number) for word, number in zip(words[::2], words[1::2])}


def cache_folder() -> pathlib.Path:
    named = os.environ.get("CALORIVO_VM_CACHE")
    if named:
        return pathlib.Path(named)
    home = os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache"
    return pathlib.Path(home) / "calorivo-vm"


class Bench:
    """Everything that the guests have in common, made once. `program` is the calorivo-cli to test."""

    def __init__(self, program: pathlib.Path, work: pathlib.Path):
        self.work = work
        self._running: set[subprocess.Popen] = set()
        self.kernel = cache_folder()
        if os.uname().machine != "x86_64":
            raise Unavailable("the guest is an x86_64 machine, this is none")
        if not shutil.which(EMULATOR):
            raise Unavailable(f"{EMULATOR} is not installed")
        made = subprocess.run([HERE / "make-guest", self.kernel], capture_output=True, text=True)
        if made.returncode == 77:
            raise Unavailable(made.stderr.strip())
        if made.returncode != 0:
            raise RuntimeError("make-guest failed:\n" + made.stderr)
        self._compile()
        self.common = self._common_files(program)

    def _compile(self) -> None:
        compile_c = ["gcc", "-std=gnu11", "-O2", "-Wall", "-Wextra", "-Werror"]
        commands = [
            [*compile_c, "-fPIC", "-shared", "-o", self.work / "smc-device.so", HERE / "smc-device.c"],
            *([*compile_c, "-static", "-o", self.work / drive, HERE / f"{drive}.c"] for drive in DRIVES),
            ["iasl", "-p", self.work / "thermal-zone", HERE / "thermal-zone.asl"],
        ]
        for command in commands:
            tool = command[0]
            if not shutil.which(tool):
                raise Unavailable(f"{tool} is not installed")
            done = subprocess.run(command, capture_output=True, text=True)
            if done.returncode != 0:
                raise RuntimeError(f"{tool} failed:\n{done.stdout}{done.stderr}")

    def _common_files(self, program: pathlib.Path) -> pathlib.Path:
        """A folder with the files of every guest: our tools, the program, its data and its libraries."""
        folder = self.work / "common"
        shutil.copytree(HERE / "guest", folder / "bin")
        (folder / "bin" / "init").rename(folder / "init")
        shutil.copy(program, folder / "bin" / "calorivo-cli")
        for drive in DRIVES:
            shutil.copy(self.work / drive, folder / "bin" / drive)
        shutil.copytree(ROOT / "data", folder / "share" / "calorivo")
        for word in subprocess.run(["ldd", program], capture_output=True, text=True).stdout.split():
            if word.startswith("/"):
                (folder / word[1:]).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(word, folder / word[1:])
        return folder

    def run(self, name: str, machine: Machine, script: str) -> Result:
        """Boots a guest, runs the script in it as root, and powers it off."""
        with tempfile.TemporaryDirectory(dir=self.work, prefix=name + "-") as temporary:
            folder = pathlib.Path(temporary)
            self._make_initrd(folder, script)
            environment = os.environ | {"LD_PRELOAD": str(self.work / "smc-device.so")}
            if machine.keys:
                environment["SMC_KEYS"] = str(HERE / "keys" / machine.keys)
            ending = self._boot(self._command(folder, machine), environment)
            try:
                with tarfile.open(fileobj=io.BytesIO((folder / "out.tar").read_bytes())) as archive:
                    files = {
                        member.name.removeprefix("./"): archive.extractfile(member).read().decode(errors="replace")
                        for member in archive
                        if member.isfile()
                    }
            except (OSError, tarfile.TarError):
                messages = (folder / "console").read_text(errors="replace") if (folder / "console").exists() else ""
                raise RuntimeError(f"the guest left nothing; {ending}\n{messages[-2000:]}") from None
        return Result(files)

    def _boot(self, command: list[str], environment: dict[str, str]) -> str:
        """How it ended."""
        output = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.PIPE}
        with subprocess.Popen(command, env=environment, text=True, **output) as process:
            self._running.add(process)
            try:
                _, errors = process.communicate(timeout=LONGEST_RUN)
                return f"the emulator ended with {process.returncode}: {errors}"
            except subprocess.TimeoutExpired:
                process.kill()
                return f"it ran longer than {LONGEST_RUN} s"
            finally:
                self._running.discard(process)

    def stop(self) -> None:
        """Ends every guest at once."""
        for process in list(self._running):
            process.kill()

    def _make_initrd(self, folder: pathlib.Path, script: str) -> None:
        files = folder / "files"
        shutil.copytree(self.common, files, symlinks=True)
        (files / "scenario").write_text(script)
        names = "\n".join(str(path.relative_to(files)) for path in sorted(files.rglob("*")))
        packed = subprocess.run(
            ["cpio", "-o", "-H", "newc", "-R", "0:0", "--quiet"],
            cwd=files, input=names.encode(), capture_output=True, check=True,
        )
        (folder / "initrd").write_bytes((self.kernel / "base.cpio").read_bytes() + packed.stdout)

    def _command(self, folder: pathlib.Path, machine: Machine) -> list[str]:
        command = [EMULATOR, "-accel", "tcg", "-icount", CLOCK, "-M", "pc", "-cpu", "max", "-m", "320"]
        command += ["-nodefaults", "-no-user-config", "-display", "none", "-no-reboot"]
        # The emulator writes an unpacked kernel into memory anew whenever the machine is reset, as it is to wake up.
        kernel = "vmlinuz" if machine.can_sleep else "vmlinux"
        command += ["-kernel", str(self.kernel / kernel), "-initrd", str(folder / "initrd")]
        command += ["-append", KERNEL_ARGUMENTS]
        for port in ("console", "out.tar"):
            command += ["-serial", f"file:{folder / port}"]
        if machine.keys:  # the driver binds to machines of this maker only
            command += ["-smbios", "type=1,manufacturer=Apple Inc.,product=MacBookPro11,,3"]
            command += ["-smbios", "type=2,manufacturer=Apple Inc.,product=Mac-2BD1B31983FE1663"]
        if machine.has_thermal_zone:
            command += ["-acpitable", f"file={self.work / 'thermal-zone.aml'}"]
        if machine.has_nvme:  # its medium answers at once: a real one would make the guest's clock race
            command += ["-blockdev", "null-co,node-name=medium,size=67108864,read-zeroes=on"]
            command += ["-device", "nvme,id=nvme,addr=2,drive=medium,serial=1"]
            # The emulator's own commands, by which the guest unplugs the drive: a third serial port.
            command += ["-chardev", f"socket,id=monitor,path={folder / 'monitor'},server=on,wait=off"]
            command += ["-mon", "monitor", "-serial", f"unix:{folder / 'monitor'}"]
        return command
