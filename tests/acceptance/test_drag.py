"""Real bundles, dragged from a real file manager."""

from acceptance import AcceptanceTest, bundles, key, main, wait_for


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

    def test_a_bundle_dropped_while_another_is_being_added_is_refused(self):
        self.build(bundles.QUILL_MAIL, bundles.HARBOR_SYNC)
        bundles.fill(self.folder / "Harbor Sync.app")
        self.start()
        self.open_file_manager()
        zone = self.zorvane.drop_zone()
        self.files.drag("Harbor Sync.app", zone)
        self.zorvane.screen.find("Adding application")
        self.files.drag("Quill Mail.app", zone)
        self.assertEqual(self.zorvane.blocked_applications(), [], "the first was added too early")

        self.zorvane.wait_for_blocked("Harbor Sync", seconds=120)
        self.zorvane.screen.find("Drop zone for an application")
        self.wait_for_filter(True, key("Harbor Sync"))
        self.zorvane.wait_for_blocked("Harbor Sync")


if __name__ == "__main__":
    main()
