"""The packaging of the macOS bundle where there is no Mac: what a dry run prints, and refuses."""

import functools
import os
import pathlib
import shlex
import shutil
import subprocess
import tempfile
import unittest

from made_bundles import SOURCE, MadeBundles, change_list

from bundle import property_list

BUILD = os.environ["ZORVANE_BUILD_FOLDER"]
OTOOL = shutil.which("otool") or shutil.which("llvm-otool-14")


@functools.lru_cache(maxsize=None)
def package(folder, arguments, wishes):
    """One run of the script, with what is wished for in its environment."""
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith("ZORVANE_")} | dict(wishes)
    return subprocess.run([SOURCE / "scripts/package-macos", "--into", folder, *arguments],
                          capture_output=True, text=True, timeout=100, check=False,
                          env=environment)


class Package(MadeBundles):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, folder)
        cls.result = pathlib.Path(folder).resolve()

    def package(self, *arguments, **wishes):
        return package(self.result, arguments, tuple(wishes.items()))

    def dry_run(self, **wishes):
        done = self.package("--dry-run", "--built", BUILD, **wishes)
        if done.returncode == 77:
            self.skipTest(done.stdout.splitlines()[-1])
        return done

    def commands(self, **wishes):
        """What would be run, without the folder's name."""
        done = self.dry_run(**wishes)
        self.assertEqual(done.returncode, 0, done.stderr)
        return [shlex.join(shlex.split(line)).replace(f"{self.result}/", "")
                for line in done.stdout.splitlines() if line.startswith("    ")]

    def signed_commands(self):
        return self.commands(ZORVANE_SIGNING_IDENTITY="Developer", ZORVANE_BUILD="7",
                             ZORVANE_PROFILE="/a.profile", ZORVANE_NOTARY_PROFILE="notary")

    def test_the_agent_is_signed_hardened_and_before_the_application(self):
        signed = [line for line in self.signed_commands() if line.startswith("codesign --force")]
        self.assertEqual(signed, [
            "codesign --force --sign Developer --options runtime --timestamp --identifier "
            "dev.kestrelworks.Zorvane.update-agent "
            "stage/Zorvane.app/Contents/MacOS/zorvane-update-agent",
            "codesign --force --sign Developer --options runtime --timestamp --entitlements "
            "Zorvane.entitlements stage/Zorvane.app"])

    def test_the_profile_is_in_the_bundle_before_it_is_sealed(self):
        commands = self.signed_commands()
        embedded = commands.index(
            "cp /a.profile stage/Zorvane.app/Contents/embedded.provisionprofile")
        signed = next(i for i, line in enumerate(commands) if line.startswith("codesign"))
        self.assertLess(embedded, signed)

    def test_bundle_and_image_are_notarised_and_get_their_tickets(self):
        about = [line.split(" --keychain-profile")[0] for line in self.signed_commands()
                 if line.startswith(("xcrun", "hdiutil convert", "spctl"))]
        image = about[2].split()[-1]
        self.assertRegex(image, r"^Zorvane-[0-9.]+\.dmg$")
        self.assertEqual(about, [
            "xcrun notarytool submit Zorvane.zip",
            "xcrun stapler staple stage/Zorvane.app",
            f"hdiutil convert -quiet draft.dmg -format UDZO -o {image}",
            f"xcrun notarytool submit {image}",
            f"xcrun stapler staple {image}",
            "spctl --assess --type execute --verbose=2 stage/Zorvane.app",
            "spctl --assess --type open --context context:primary-signature --verbose=2 " + image])

    def test_the_image_shows_the_applications_folder_beside_the_program(self):
        self.commands()
        stage = self.result / "stage"
        self.assertEqual(sorted(os.listdir(stage)), ["Applications", "Zorvane.app"])
        self.assertEqual(os.readlink(stage / "Applications"), "/Applications")

    def test_an_ad_hoc_signature_is_not_hardened_and_has_no_entitlements(self):
        signed = [line for line in self.commands() if line.startswith("codesign --force")]
        self.assertEqual(len(signed), 2)
        for line in signed:
            self.assertNotIn("runtime", line)
            self.assertNotIn("entitlements", line)

    def test_what_an_ad_hoc_signature_cannot_do_is_told(self):
        self.assertIn("the filter cannot be activated", self.dry_run().stdout)

    def test_wishes_that_do_not_go_together_are_refused(self):
        signer = {"ZORVANE_SIGNING_IDENTITY": "Developer"}
        for wishes, missing in (
                ({"ZORVANE_NOTARY_PROFILE": "notary"}, "ZORVANE_SIGNING_IDENTITY"),
                (signer | {"ZORVANE_BUILD": "7"}, "ZORVANE_PROFILE"),
                (signer | {"ZORVANE_PROFILE": "/a.profile"}, "ZORVANE_BUILD")):
            with self.subTest(missing):
                done = self.dry_run(**wishes)
                self.assertEqual(done.returncode, 1)
                self.assertIn(f"set {missing}", done.stderr)

    def test_a_build_number_that_is_none_is_refused(self):
        for number in ("1.0", "b7", "-1", " 7"):
            with self.subTest(number):
                done = self.dry_run(ZORVANE_BUILD=number)
                self.assertEqual(done.returncode, 1)
                self.assertIn(f'ZORVANE_BUILD is "{number}"', done.stderr)

    def test_the_build_number_is_in_the_bundle(self):
        done = self.dry_run(ZORVANE_BUILD="42")
        self.assertEqual(done.returncode, 0, done.stderr)
        information = property_list(self.result / "stage/Zorvane.app/Contents/Info.plist")
        self.assertEqual(information["CFBundleVersion"], "42")

    def test_a_build_without_a_number_is_told_to_be_no_release(self):
        done = self.dry_run()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("build 1, which is not for releases", done.stdout)

    def test_the_filter_extension_is_embedded_and_signed_before_what_contains_it(self):
        # With a slash at the end, as a shell completes the name of a folder.
        extension = self.make_extension(self.folder)
        commands = self.commands(ZORVANE_FILTER_EXTENSION=f"{extension}/")
        embedded = f"stage/Zorvane.app/Contents/Library/SystemExtensions/{extension.name}"
        program = self.result / embedded / "Contents/MacOS/Filter"
        self.assertTrue(os.access(program, os.X_OK))
        signed = [line for line in commands if line.startswith("codesign --force")]
        self.assertEqual(signed[0], "codesign --force --sign - "
                         f"--preserve-metadata=identifier,entitlements {embedded}")
        self.assertTrue(signed[-1].endswith(" stage/Zorvane.app"))

    def assert_refused(self, extension, reason):
        done = self.dry_run(ZORVANE_FILTER_EXTENSION=str(extension))
        self.assertEqual(done.returncode, 1)
        # CMake breaks lines as it likes.
        told = " ".join(done.stderr.split())
        self.assertIn("ZORVANE_FILTER_EXTENSION cannot be embedded", told)
        self.assertIn(reason, told)
        self.assertIn("The build could not be configured.", told)

    def test_another_extension_is_refused(self):
        extension = self.make_extension(self.folder)
        change_list(extension / "Contents/Info.plist", CFBundleIdentifier="com.example.Filter")
        self.assert_refused(
            extension, "'com.example.Filter', not 'dev.kestrelworks.Zorvane.FilterExtension'")

    def test_an_extension_that_is_not_there_is_refused(self):
        self.assert_refused(self.folder / "x.systemextension", "there is no such folder")

    def test_qt_is_deployed_for_the_agent_and_for_our_qml_too(self):
        folder = f"{self.result}/stage/Zorvane.app"
        self.assertIn(f"{folder} -always-overwrite -qmldir={SOURCE}/ui "
                      f"-executable={folder}/Contents/MacOS/zorvane-update-agent",
                      self.dry_run().stdout)

    def test_both_programs_look_for_libraries_in_the_bundle(self):
        self.dry_run()
        for name in ("Zorvane", "zorvane-update-agent"):
            program = self.result / "stage/Zorvane.app/Contents/MacOS" / name
            self.assertIn(b"@executable_path/../Frameworks", program.read_bytes())

    def test_a_build_that_is_not_there_is_told(self):
        done = self.package("--dry-run", "--built", "/nowhere")
        self.assertEqual(done.returncode, 1)
        self.assertIn("nowhere", done.stderr)

    def test_arguments_that_make_no_sense_are_told(self):
        for arguments in (["--sign"], ["--into"], ["--built", BUILD]):
            with self.subTest(arguments):
                done = self.package(*arguments)
                self.assertEqual(done.returncode, 1)
                self.assertIn("Usage:", done.stderr)

    @unittest.skipIf(os.uname().sysname == "Darwin", "this is a Mac")
    def test_a_package_itself_takes_a_mac(self):
        done = self.package()
        self.assertEqual(done.returncode, 1)
        self.assertIn("A package is made on a Mac.", done.stderr)

    @unittest.skipUnless(OTOOL, "no otool")
    def test_libraries_that_other_macs_do_not_have_are_found(self):
        linked = self.folder / "linked"
        if subprocess.run([SOURCE / "tests/linked_code/link", linked], timeout=60,
                          stdout=subprocess.DEVNULL, check=False).returncode == 77:
            self.skipTest("nothing to link with")
        source = SOURCE / "scripts/lib/macos/assemble.sh"
        done = subprocess.run(
            ["bash", "-c", f". {source}; foreign_libraries {linked}/library.dylib"],
            capture_output=True, text=True, timeout=20, check=False,
            env=os.environ | {"OTOOL": OTOOL})
        # Its own name is no path that a bundle could have.
        self.assertEqual(done.stdout.strip(), "library.dylib")


if __name__ == "__main__":
    unittest.main()
