// What the page's lists of choices share.

// Who points at a choice goes on to play: the letters are keys again.
export function onChosen(select, act) {
  let pointed = false;
  select.addEventListener("pointerdown", () => { pointed = true; });
  select.addEventListener("keydown", () => { pointed = false; });
  select.addEventListener("change", () => {
    act();
    if (pointed) select.blur();
  });
}
