<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>calorivo::AboutWindow</name>
    <message>
        <source>About Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Watches the temperatures, fans and drives of this computer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>© 2026 The Calorivo developers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free software under the MIT License. It comes without any warranty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NAMES OF TRANSLATORS</source>
        <extracomment>Your names, separated by commas.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Translated by %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thank you for using Calorivo.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::Actions</name>
    <message>
        <source>Show &amp;Main Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Reset Maximums</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find Sensor…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Celsius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fahrenheit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calorivo &amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Send Feedback…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rate Calorivo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Follow the Makers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;More from the Makers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subscribe to the &amp;Newsletter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open Log File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Log File in F&amp;older</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::AlertsPane</name>
    <message>
        <source>Limit for a &amp;single sensor:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limit for the &amp;average:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Notify me of temperatures above their limits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limits are in degrees Celsius. A sensor that stays above its limit is reported again after ten minutes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Notifications stay until they are &amp;clicked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send a &amp;Test Notification</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available: this program cannot send notifications here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Notifications are shown by the desktop.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::GeneralPane</name>
    <message>
        <source>Start when I &amp;log in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start &amp;hidden</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In a &amp;window, among the running programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In the &amp;menu bar only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calorivo runs:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A change takes effect when Calorivo is started the next time. In the menu bar only, it also starts when you log in.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Those of the desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Colors:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::LogPane</name>
    <message>
        <source>&amp;Write every check to a log file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Temperatures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The log holds:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log temperatures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fan speeds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log fan speeds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Marks at temperatures &amp;above their limits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log marks at temperatures above their limits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Keep adding to the same file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Otherwise the file is begun anew, and what it held is lost, whenever Calorivo starts and whenever what the log holds changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Log file:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the log file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the log file in its folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available: this program cannot open files here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no log file, since there is no folder for documents.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::MenuBarPane</name>
    <message>
        <source>Shown now:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;First temperature:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sensor of the first temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Second temperature:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sensor of the second temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fan s&amp;peed:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No fan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The second temperature is shown together with the first one or with the fan speed, never alone.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where there is room</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Beside the icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inside the icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the &amp;readings:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Many panels show no text beside an icon. There the digits of the first reading can take the icon&apos;s place.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;maller font</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;horter titles, without units</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the &amp;icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Without readings beside it, the icon is the only way to reach Calorivo.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::PaneTitlePreview</name>
    <message>
        <source>The icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::PreferencesWindow</name>
    <message>
        <source>Temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calorivo Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Panes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::SensorTableModel</name>
    <message>
        <source>%1, highest %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sensor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Level</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>calorivo::TemperaturePane</name>
    <message>
        <source>&amp;Celsius (°C)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fahrenheit (°F)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show temperatures in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Seconds between two checks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> s</source>
        <comment>seconds</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check &amp;every:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A short interval follows quick changes. A long one leaves the processor asleep for longer and saves power.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the temperatures of &amp;drives</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset the recorded maximums</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorded maximums:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The mark on each bar of the main window, at the highest temperature seen, begins anew.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drives appear beside the sensors, among the choices for the menu bar and in the log.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available: no drive of this computer tells its temperature.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
