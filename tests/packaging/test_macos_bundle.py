"""What is found wrong with a bundle, and that a good one is let through."""

import plistlib
import shutil
import unittest

from made_bundles import CODE, ENTITLEMENTS, EXTENSION, IDENTIFIER, SOURCE, MadeBundles
from made_bundles import change_list, write, write_list

import bundle

GROUP = f"group.{IDENTIFIER}"


class Bundle(MadeBundles):
    def problems(self, with_qt=False):
        return bundle.bundle_problems(self.app, ENTITLEMENTS, with_qt)

    def assert_problem(self, text, problems=None):
        problems = self.problems() if problems is None else problems
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(text, problems[0])

    def test_a_whole_bundle_has_no_problem(self):
        self.assertEqual(self.problems(), [])

    def test_it_may_have_the_filter_extension_in_it(self):
        self.embed_extension()
        self.assertEqual(self.problems(), [])

    def test_information_that_the_system_needs_is_missed(self):
        for key in ("CFBundleShortVersionString", "LSMinimumSystemVersion", "NSPrincipalClass",
                    "LSApplicationCategoryType", "CFBundleIconFile", "CFBundleExecutable"):
            with self.subTest(key):
                before = self.information.read_bytes()
                change_list(self.information, **{key: None})
                self.assert_problem(key)
                self.information.write_bytes(before)

    def test_a_build_that_is_no_number_cannot_be_compared_with_a_release(self):
        change_list(self.information, CFBundleVersion="1.0b")
        self.assert_problem("not a whole number")

    def test_a_window_of_half_the_resolution_is_a_problem(self):
        change_list(self.information, NSHighResolutionCapable=False)
        self.assert_problem("NSHighResolutionCapable")

    def test_a_program_of_another_system_is_a_problem(self):
        write(self.contents / "MacOS/Zorvane", b"\x7fELF", 0o755)
        self.assert_problem("MacOS/Zorvane: not a program")

    def test_a_program_that_may_not_be_run_is_a_problem(self):
        (self.contents / "MacOS/Zorvane").chmod(0o644)
        self.assert_problem("MacOS/Zorvane: not a program")

    def test_a_cut_off_icon_is_a_problem(self):
        write(self.contents / "Resources/Zorvane.icns", b"icns\0\0\0\x09")
        self.assert_problem("not an icon family")

    def test_without_its_agent_the_bundle_is_not_whole(self):
        self.agent.unlink()
        self.assert_problem("no update agent")

    def test_an_agent_has_to_be_found_by_its_label(self):
        change_list(self.agent, Label="another")
        self.assert_problem("Label is 'another'")

    def test_an_agent_says_when_it_runs(self):
        change_list(self.agent, StartInterval=None)
        self.assert_problem("nothing says when it runs")

    def test_an_agent_starts_a_program_of_the_bundle(self):
        (self.contents / "MacOS/zorvane-update-agent").unlink()
        self.assert_problem("is no program in the bundle")

    def test_a_damaged_property_list_is_named(self):
        write(self.agent, b"<plist><dict>")
        with self.assertRaisesRegex(bundle.Problem, "update-agent.plist: not a property list"):
            self.problems()

    def test_a_list_of_another_kind_is_not_taken_for_a_dictionary(self):
        write_list(self.agent, ["Label"])
        with self.assertRaisesRegex(bundle.Problem, "of a dictionary"):
            self.problems()

    def test_the_parts_of_qt_are_missed_where_they_are_asked_for(self):
        problems = self.problems(with_qt=True)
        self.assertEqual(len(problems), 5)
        for place in ("Frameworks/QtCore.framework", "Frameworks/QtQuick.framework",
                      "PlugIns/platforms/libqcocoa.dylib", "Resources/qml/QtQuick/qmldir",
                      "Resources/qt.conf"):
            write(self.contents / place, b"")
        self.assertEqual(self.problems(with_qt=True), [])

    def entitlement_problems(self, **changes):
        path = self.folder / "Zorvane.entitlements"
        shutil.copy(ENTITLEMENTS, path)
        change_list(path, **changes)
        return bundle.bundle_problems(self.app, path, with_qt=False)

    def test_entitlements_that_do_not_fit_are_told(self):
        for key, value, text in (
                (bundle.INSTALLS_EXTENSIONS, None, "system-extension.install is None"),
                (bundle.GROUPS, ["group.other"], "group.dev.kestrelworks.Zorvane is not among"),
                (bundle.NETWORK_EXTENSION, ["dns-proxy"], "does not name the content filter"),
                (bundle.SANDBOX, True, "a sandbox would keep")):
            with self.subTest(key):
                self.assert_problem(text, self.entitlement_problems(**{key: value}))


class Extension(MadeBundles):
    def setUp(self):
        super().setUp()
        self.extension = self.make_extension(self.folder)
        self.list = self.extension / "Contents/Info.plist"

    def problems(self):
        return bundle.extension_problems(self.extension, EXTENSION)

    def test_a_filter_extension_has_no_problem(self):
        self.assertEqual(self.problems(), [])

    def test_the_example_for_its_makers_has_no_problem(self):
        text = (SOURCE / "docs/macos.md").read_text()
        example = text.split("```xml NetworkExtension\n")[1].split("```")[0]
        content = plistlib.loads(f'<plist version="1.0"><dict>{example}</dict></plist>'.encode())
        self.assertEqual(list(content), ["NSSystemExtensionUsageDescription", "NetworkExtension"])
        change_list(self.list, **content)
        self.assertEqual(self.problems(), [])

    def test_what_the_system_would_refuse_is_told(self):
        for changes, text in (
                ({"CFBundleIdentifier": "com.example.Filter"}, "'com.example.Filter', not"),
                ({"CFBundlePackageType": "APPL"}, "CFBundlePackageType"),
                ({"CFBundleVersion": None}, "CFBundleVersion is missing"),
                ({"NSSystemExtensionUsageDescription": ""}, "UsageDescription is missing"),
                ({"CFBundleExecutable": "Missing"}, "not a program"),
                ({"CFBundleExecutable": "../Info.plist"}, "names no program"),
                ({"NetworkExtension": None}, "NetworkExtension is missing"),
                ({"NetworkExtension": ["filter-data"]}, "NetworkExtension is missing")):
            with self.subTest(text):
                self.assert_problem(text, **changes)

    def assert_problem(self, text, **changes):
        before = self.list.read_bytes()
        change_list(self.list, **changes)
        problems = self.problems()
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(text, problems[0])
        self.list.write_bytes(before)

    def test_another_provider_is_no_filter(self):
        for providers in ({}, {"com.apple.networkextension.dns-proxy": "Filter.Provider"},
                          {bundle.FILTER_DATA: ""}, ["Filter.Provider"]):
            with self.subTest(providers):
                self.assert_problem("names no filter-data provider", NetworkExtension={
                    "NEMachServiceName": GROUP, "NEProviderClasses": providers})

    def test_the_filter_is_reached_by_a_name_of_the_group(self):
        providers = {bundle.FILTER_DATA: "Filter.Provider"}
        for name in ("com.example.filter", f"{GROUP}2.filter", f"ABCDE12345.{GROUP}", "", 7):
            with self.subTest(name):
                self.assert_problem(f"NEMachServiceName of NetworkExtension is {name!r}; it has "
                                    f"to begin with {GROUP}", NetworkExtension={
                                        "NEMachServiceName": name, "NEProviderClasses": providers})
        self.assert_problem("NEMachServiceName", NetworkExtension={"NEProviderClasses": providers})

    def test_the_name_of_the_service_stands_beside_the_providers(self):
        self.assert_problem("NEMachServiceName", NEMachServiceName=f"{GROUP}.filter",
                            NetworkExtension={
                                "NEProviderClasses": {bundle.FILTER_DATA: "Filter.Provider"}})

    def test_the_system_finds_an_extension_by_its_name(self):
        self.extension = self.extension.rename(self.folder / "Filter.systemextension")
        self.assertIn(f"has to be called {EXTENSION}.systemextension", self.problems()[0])

    def test_one_that_is_not_there_is_told(self):
        shutil.rmtree(self.extension)
        self.assertIn("no such folder", self.problems()[0])

    def test_two_in_the_application_are_one_too_many(self):
        self.embed_extension()
        write(self.contents / "Library/SystemExtensions/x.systemextension/Contents/a", CODE)
        problems = bundle.bundle_problems(self.app, ENTITLEMENTS, False)
        self.assertEqual(len(problems), 1)
        self.assertIn("one system extension is enough", problems[0])


if __name__ == "__main__":
    unittest.main()
