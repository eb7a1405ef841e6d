"""The packaging from beginning to end, on a Mac whose tools are played."""

import os
import subprocess
import unittest

from made_bundles import CODE, IDENTIFIER, SOURCE, MadeBundles
from made_bundles import change_list, write, write_profile

import bundle

PLAYER = SOURCE / "tests/packaging/tool-of-a-mac"
TOOLS = ("cmake", "codesign", "ditto", "hdiutil", "ninja", "osascript", "otool", "security",
         "spctl", "uname", "xattr", "xcrun")
WISHES = {"ZORVANE_BUILD": "7", "ZORVANE_SIGNING_IDENTITY": "Developer",
          "ZORVANE_NOTARY_PROFILE": "notary"}


class Release(MadeBundles):
    def setUp(self):
        super().setUp()
        for place in ("Frameworks/QtQuick.framework/QtQuick", "Resources/qt.conf",
                      "PlugIns/platforms/libqcocoa.dylib", "Resources/qml/QtQuick/qmldir",
                      "Frameworks/QtCore.framework/QtCore"):
            write(self.contents / place, CODE)
        self.tools = self.folder / "tools"
        self.tools.mkdir()
        for name in TOOLS:
            (self.tools / name).symlink_to(PLAYER)
        self.calls = self.folder / "calls"
        self.profile = self.folder / "Zorvane.provisionprofile"
        write_profile(self.profile)

    def package(self, wishes=None, into=None, **played):
        """The script's outcome; what is played by the tools is told by name."""
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith("ZORVANE_")}
        environment |= {"PATH": f"{self.tools}:{os.environ['PATH']}",
                        "PLAYED_CALLS": str(self.calls), "PLAYED_BUNDLE": str(self.app)}
        environment |= {f"PLAYED_{name.upper()}": value for name, value in played.items()}
        environment |= WISHES | {"ZORVANE_PROFILE": str(self.profile)} if wishes is None else wishes
        folder = into or self.folder / "package"
        return subprocess.run([SOURCE / "scripts/package-macos", "--into", folder],
                              capture_output=True, text=True, timeout=60, check=False,
                              cwd=self.folder, env=environment)

    def test_a_release_is_made_to_the_end(self):
        self.embed_extension()
        write(self.contents / "Library/SystemExtensions" / f"{IDENTIFIER}.FilterExtension"
              ".systemextension/Contents/embedded.provisionprofile", b"")
        done = self.package()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout.splitlines()[-1], r"/Zorvane-[0-9.]+\.dmg is ready\.$")
        calls = self.calls.read_text().splitlines()
        tools = [" ".join(line.split()[:2]) for line in calls]
        order = ["cmake -S", "cmake --build", "cmake --install", "security cms",
                 "xattr -cr", "codesign --force", "codesign --verify", "ditto -c", "xcrun notarytool",
                 "xcrun stapler", "hdiutil create", "hdiutil attach", "hdiutil detach",
                 "hdiutil convert", "codesign --sign", "spctl --assess"]
        places = [tools.index(tool) for tool in order]
        self.assertEqual(places, sorted(places))

    def test_the_build_number_is_handed_on(self):
        self.assertEqual(self.package().returncode, 0)
        configured = self.calls.read_text().splitlines()[1]
        self.assertTrue(configured.startswith("cmake -S"), configured)
        self.assertIn(" -DZORVANE_BUILD=7 ", configured)

    def test_paths_are_read_from_where_the_caller_stands(self):
        wishes = WISHES | {"ZORVANE_PROFILE": self.profile.name}
        done = self.package(wishes=wishes, into="package")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(f" {self.profile} ", self.calls.read_text())
        self.assertTrue((self.folder / "package/stage/Zorvane.app").is_dir())

    def test_the_signer_is_in_the_entitlements(self):
        self.assertEqual(self.package().returncode, 0)
        signed = bundle.property_list(self.folder / "package/Zorvane.entitlements")
        self.assertEqual(signed["com.apple.developer.team-identifier"], "ABCDE12345")
        self.assertEqual(signed[bundle.GROUPS], [f"group.{IDENTIFIER}"])

    def test_without_an_identity_nothing_is_handed_in(self):
        done = self.package(wishes={})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertNotIn("xcrun", self.calls.read_text())
        self.assertNotIn("runtime", self.calls.read_text())

    def test_each_step_that_fails_is_named_and_the_last(self):
        for failure, told in (
                ("cmake -S", "The build could not be configured."),
                ("cmake --build", "The build failed."),
                ("cmake --install", "The bundle could not be assembled."),
                ("otool", "otool cannot read it."),
                ("security", "not a provisioning profile."),
                ("xattr", "attributes could not be cleared."),
                ("codesign --force", "could not be signed."),
                ("codesign --verify", "The signatures do not hold."),
                ("codesign --display", "its signature cannot be read."),
                ("ditto", "The bundle could not be packed."),
                ("xcrun notarytool submit", "could not be handed in for notarisation"),
                ("xcrun stapler", "The ticket could not be attached to the bundle."),
                ("hdiutil create", "The disk image could not be made."),
                ("hdiutil attach", "The disk image could not be opened."),
                ("hdiutil detach", "The disk image could not be closed."),
                ("hdiutil convert", "The disk image could not be packed."),
                ("codesign --sign", "The disk image could not be signed."),
                ("spctl --assess --type execute", "This Mac refuses the bundle."),
                ("spctl --assess --type open", "This Mac refuses the image.")):
            with self.subTest(failure):
                self.calls.write_text("")
                done = self.package(failure=failure)
                self.assertEqual(done.returncode, 1)
                self.assertIn(told, done.stderr)
                self.assertNotIn("is ready", done.stdout)
                self.assertTrue(self.calls.read_text().splitlines()[-1].startswith(failure))

    def assert_refused(self, told, **played):
        done = self.package(**played)
        self.assertEqual(done.returncode, 1)
        self.assertIn(told, done.stderr)
        self.assertNotIn("is ready", done.stdout)

    def test_what_the_notary_refuses_is_not_given_away(self):
        self.assert_refused("was not notarised", verdict="Invalid")
        self.assertIn("xcrun notarytool log 1234", self.calls.read_text())

    def test_code_without_the_hardened_runtime_is_found(self):
        self.assert_refused("without the hardened runtime", flags="flags=0x2(adhoc)")

    def test_a_library_of_this_mac_only_is_found(self):
        self.assert_refused("/opt/homebrew/lib/libpng16.dylib",
                            library="\t/opt/homebrew/lib/libpng16.dylib (compatibility version 1)")

    def test_a_bundle_without_qt_is_not_whole(self):
        (self.contents / "PlugIns/platforms/libqcocoa.dylib").unlink()
        self.assert_refused("libqcocoa.dylib: missing")

    def test_a_profile_that_has_run_out_is_refused_before_signing(self):
        write_profile(self.profile, days=-1)
        self.assert_refused("has run out")
        self.assertNotIn("codesign", self.calls.read_text())

    def test_a_profile_that_grants_less_is_refused_before_signing(self):
        change_list(self.profile, Entitlements={})
        self.assert_refused("The profile does not grant what Zorvane needs.")
        self.assertNotIn("codesign", self.calls.read_text())

    def test_an_extension_entitled_for_development_only_is_refused(self):
        self.embed_extension()
        write(self.contents / "Library/SystemExtensions" / f"{IDENTIFIER}.FilterExtension"
              ".systemextension/Contents/embedded.provisionprofile", b"")
        done = self.package(filter="content-filter-provider")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("is not entitled to filter by content-filter-provider-systemextension",
                      done.stderr)

    def test_an_extension_without_a_profile_of_its_own_is_refused(self):
        self.embed_extension()
        self.assert_refused("has no embedded.provisionprofile")

    def test_a_window_that_is_not_arranged_is_no_failure(self):
        done = self.package(failure="osascript")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("the Finder did not arrange the window", done.stdout)


if __name__ == "__main__":
    unittest.main()
