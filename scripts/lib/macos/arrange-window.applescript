-- The window that opens with the disk image: Zorvane left, the Applications folder right.
tell application "Finder"
	tell disk "Zorvane"
		open
		set current view of container window to icon view
		set toolbar visible of container window to false
		set statusbar visible of container window to false
		set the bounds of container window to {200, 160, 740, 500}
		set arrangement of icon view options of container window to not arranged
		set icon size of icon view options of container window to 112
		set position of item "Zorvane.app" of container window to {150, 160}
		set position of item "Applications" of container window to {390, 160}
		update without registering applications
		delay 1
		close
	end tell
end tell
