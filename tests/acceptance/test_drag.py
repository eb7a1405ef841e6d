"""Real bundles, dragged from a real file manager."""

from acceptance import AcceptanceTest, bundles, key, main, wait_for
import pointer


class Drag(AcceptanceTest):
    def test_a_dropped_bundle_is_listed_and_blocked(self):
        self.build(bundles.QUILL_MAIL)
        self.start()
        self.open_file_manager()
        self.drag("Quill Mail.app")

        [record] = self.zorvane.wait_for_blocked("Quill Mail")
        bundle = str(self.folder / "Quill Mail.app")
        self.assertEqual(record["bundleIdentifier"], "com.example.quill-mail")
        self.assertEqual(record["signingIdentifier"], "Quill Mail")
        self.assertEqual(record["path"], bundle)
        self.assertEqual(
            record["auxiliaryCodeIdentities"], [{"signingIdentifier": "Quill Courier"}]
        )
        self.assertIn("iconData", record)

        self.wait_for_filter(True, key("Quill Mail"))
        self.assertEqual(self.zorvane.rules()["blockedApplicationPaths"], [bundle])
        self.assertTrue(self.zorvane.preferences()["protectionRequested"])
        self.zorvane.screen.find("Quill Mail", "list item")
        self.zorvane.screen.find("Protection on")

    def test_of_several_bundles_only_the_first_is_added(self):
        self.build(*bundles.APPLICATIONS)
        self.start()
        self.open_file_manager()
        self.files.select_all()
        self.drag("Quill Mail.app")

        self.zorvane.wait_for_blocked("Atlas Notes")
        self.wait_for_filter(True, key("Atlas Notes"))
        self.zorvane.screen.find("Drop zone for an application")
        self.zorvane.wait_for_blocked("Atlas Notes")

    def test_a_file_that_is_no_bundle_is_refused_by_the_alert(self):
        (self.folder / "letter.txt").write_text("Dear reader")
        self.start()
        self.open_file_manager()
        self.drag("letter.txt")

        self.zorvane.screen.find("Drop an application with the .app extension.")
        self.zorvane.click("OK")
        wait_for(lambda: not self.zorvane.screen.showing("OK"), "the alert to close")
        self.assertEqual(self.zorvane.blocked_applications(), [])


class DragWhileAdding(AcceptanceTest):
    """While an application is being added whose programs take seconds to read."""

    @classmethod
    def setUpClass(cls):
        cls.big = bundles.build(bundles.HARBOR_SYNC, cls.desktop.new_folder())
        bundles.fill(cls.big)

    def setUp(self):
        super().setUp()
        self.build(bundles.QUILL_MAIL)
        place = self.folder / self.big.name
        self.big.rename(place)
        self.addCleanup(place.rename, self.big)
        self.start()
        self.open_file_manager()
        self.zone = self.zorvane.drop_zone()
        left, top, *_ = self.zorvane.screen.find("Drop zone for an application").extents()
        self.beside_the_texts = (left + 60, top + 12)
        # Where it is, before another drag needs to know.
        self.small = self.files.position("Quill Mail.app")
        self.files.drag("Harbor Sync.app", self.zone)
        self.zorvane.screen.find("Adding application", "panel")
        self.zorvane.screen.find("Adding application", "progress bar")

    def assert_still_adding(self):
        self.assertEqual(self.zorvane.blocked_applications(), [], "it was added too early")

    def wait_until_added(self):
        self.zorvane.wait_for_blocked("Harbor Sync", seconds=120)
        self.zorvane.screen.find("Drop zone for an application")

    def is_highlighted(self):
        red, _, blue = self.zorvane.window.color(*self.beside_the_texts)
        return red < 80 and blue > 180

    def test_a_dropped_bundle_is_refused(self):
        pointer.drag(self.small, self.zone)
        self.assert_still_adding()
        self.wait_until_added()
        self.wait_for_filter(True, key("Harbor Sync"))
        self.zorvane.wait_for_blocked("Harbor Sync")

    def test_a_bundle_that_hovers_is_welcome_afterwards(self):
        drag = pointer.Drag(self.small)
        drag.carry(self.zone)
        self.assertFalse(self.is_highlighted())
        self.assert_still_adding()
        self.wait_until_added()
        wait_for(self.is_highlighted, "the drop zone to stand out")
        drag.rest()
        drag.drop()
        self.zorvane.wait_for_blocked("Harbor Sync", "Quill Mail")


if __name__ == "__main__":
    main()
