"""In which order a bundle is signed, and with what."""

import unittest

from made_bundles import CODE, ENTITLEMENTS, IDENTIFIER, MadeBundles
from made_bundles import write, write_list, write_profile

import bundle
import signing


class Order(MadeBundles):
    def order(self):
        return [str(path.relative_to(self.folder)) for path in signing.signing_order(self.app)]

    def test_the_agent_comes_before_the_application(self):
        self.assertEqual(self.order(), [
            "Zorvane.app/Contents/MacOS/zorvane-update-agent", "Zorvane.app"])

    def test_what_lies_inside_comes_first(self):
        write(self.contents / "PlugIns/platforms/libqcocoa.dylib", CODE)
        write(self.contents / "Frameworks/libsimdjson.dylib", CODE)
        framework = self.contents / "Frameworks/QtCore.framework"
        write(framework / "Versions/A/QtCore", CODE)
        (framework / "Versions/Current").symlink_to("A")
        (framework / "QtCore").symlink_to("Versions/Current/QtCore")
        extension = self.embed_extension()
        write(extension / "Contents/Frameworks/libinner.dylib", CODE)
        # Links to code, and what is no code, are sealed by the bundle.
        (self.contents / "Resources/libqcocoa.dylib").symlink_to("../PlugIns/libqcocoa.dylib")
        write(self.contents / "Resources/notes.dylib", b"text")

        order = self.order()
        in_extension = f"Zorvane.app/Contents/Library/SystemExtensions/{extension.name}"
        self.assertCountEqual(order, [
            f"{in_extension}/Contents/Frameworks/libinner.dylib",
            in_extension,
            "Zorvane.app/Contents/Frameworks/QtCore.framework",
            "Zorvane.app/Contents/Frameworks/libsimdjson.dylib",
            "Zorvane.app/Contents/MacOS/zorvane-update-agent",
            "Zorvane.app/Contents/PlugIns/platforms/libqcocoa.dylib",
            "Zorvane.app",
        ])
        for i, path in enumerate(order):
            for later in order[i + 1:]:
                self.assertFalse(later.startswith(path + "/"), f"{later} lies in {path}")

    def test_code_for_several_processors_is_code(self):
        write(self.contents / "Frameworks/libfat.dylib", b"\xca\xfe\xba\xbe\0\0\0\2")
        self.assertIn("Zorvane.app/Contents/Frameworks/libfat.dylib", self.order())


class Profile(MadeBundles):
    def setUp(self):
        super().setUp()
        self.profile = self.folder / "profile.plist"
        self.signed = self.folder / "signed.entitlements"

    def problems(self):
        entitlements = signing.signed_entitlements(ENTITLEMENTS, self.profile, IDENTIFIER)
        write_list(self.signed, entitlements)
        return signing.profile_problems(self.signed, self.profile)

    def test_the_team_of_the_profile_signs(self):
        write_profile(self.profile)
        entitlements = signing.signed_entitlements(ENTITLEMENTS, self.profile, IDENTIFIER)
        self.assertEqual(entitlements[signing.IDENTIFIER], f"ABCDE12345.{IDENTIFIER}")
        self.assertEqual(entitlements[signing.TEAM], "ABCDE12345")
        self.assertEqual(entitlements[bundle.NETWORK_EXTENSION],
                         ["content-filter-provider-systemextension"])
        self.assertEqual(self.problems(), [])

    def test_a_profile_for_development_has_its_own_name_for_the_filter(self):
        write_profile(self.profile, filters=["content-filter-provider"])
        entitlements = signing.signed_entitlements(ENTITLEMENTS, self.profile, IDENTIFIER)
        self.assertEqual(entitlements[bundle.NETWORK_EXTENSION], ["content-filter-provider"])
        self.assertEqual(self.problems(), [])

    def test_a_profile_that_grants_less_is_a_problem(self):
        write_profile(self.profile, **{bundle.GROUPS: ["group.com.example"]})
        self.assertEqual(len(self.problems()), 1)
        self.assertIn("application-groups", self.problems()[0])

    def test_a_profile_without_a_filter_is_a_problem(self):
        write_profile(self.profile, filters=[])
        self.assertIn("networkextension", self.problems()[0])

    def test_a_profile_of_another_program_is_a_problem(self):
        write_profile(self.profile, **{signing.IDENTIFIER: "ABCDE12345.com.example"})
        self.assertIn("application-identifier", self.problems()[0])

    def test_a_profile_for_all_programs_of_the_team_will_do(self):
        write_profile(self.profile, **{signing.IDENTIFIER: "ABCDE12345.*"})
        self.assertEqual(self.problems(), [])

    def test_a_profile_that_has_run_out_is_a_problem(self):
        write_profile(self.profile, days=-1)
        self.assertIn("has run out", self.problems()[0])

    def test_a_profile_without_a_team_is_refused(self):
        write_list(self.profile, {"Entitlements": {}})
        with self.assertRaisesRegex(bundle.Problem, "names no team"):
            self.problems()


if __name__ == "__main__":
    unittest.main()
