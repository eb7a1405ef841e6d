"""The protection switch and the system's approval, worked by mouse."""

from acceptance import AcceptanceTest, bundles, key, main
from accessibility import Program
from windows import Window
import pointer


class Protection(AcceptanceTest):
    def test_the_switch_turns_the_filter_off_and_on(self):
        self.build(bundles.MEADOW_PLAYER)
        self.start()
        self.open_file_manager()
        self.drag("Meadow Player.app")
        self.wait_for_filter(True, key("Meadow Player"))

        self.zorvane.click("Protection", "check box")
        self.wait_for_filter(False, key("Meadow Player"))
        self.zorvane.screen.find("Protection off")
        self.zorvane.click("Protection", "check box")
        self.wait_for_filter(True, key("Meadow Player"))

    def test_a_removed_application_is_blocked_no_more(self):
        self.build(bundles.MEADOW_PLAYER, bundles.QUILL_MAIL)
        self.start()
        self.open_file_manager()
        for name in ("Quill Mail", "Meadow Player"):
            self.drag(f"{name}.app")
            self.zorvane.screen.find(name, "list item")
        self.wait_for_filter(True, key("Meadow Player"), key("Quill Mail"))

        self.zorvane.click("Remove from list")
        self.zorvane.wait_for_blocked("Quill Mail")
        self.wait_for_filter(True, key("Quill Mail"))

    def test_the_extension_is_allowed_in_the_system_settings(self):
        self.build(bundles.QUILL_MAIL)
        self.start(system={"approval": "ask"})
        self.open_file_manager()
        self.drag("Quill Mail.app")

        self.zorvane.screen.find("Finish enabling protection")
        self.zorvane.click("Open System Settings", "push button")
        self.addCleanup(Window("System Settings").close)
        settings = Program("zorvane-system-settings")
        self.assertFalse(self.zorvane.filter_configuration().get("isEnabled", False))
        pointer.click(*settings.spot("Allow", "push button"))

        self.wait_for_filter(True, key("Quill Mail"))
        self.zorvane.screen.find("Protection on")


if __name__ == "__main__":
    main()
